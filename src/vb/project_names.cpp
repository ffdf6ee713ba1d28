#include "vb/project_names.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::vb {
namespace {

bool IsSortOfType(const Declaration& declaration) {
  return declaration.As<Record>() != nullptr || declaration.As<Enumeration>() != nullptr;
}

}  // namespace

void ProjectNames::Add(const Module& module, std::u16string_view name) {
  const auto position = modules_.size();
  modules_.push_back(&module);
  const auto own_name = module.Name().empty() ? name : module.Name();
  const bool is_standard = module.kind == ModuleKind::kStandard;
  if (!own_name.empty())
    AddEntry(own_name, {{Meaning::Kind::kModule, position, 0, 0}, true, true, !is_standard});
  AddDeclarations(position);
  for (std::size_t i = 0; i < module.members.size(); ++i) {
    const auto& member = module.members[i];
    const bool is_public = is_standard && member.scope == Scope::kPublic;
    AddEntry(member.name, {{Meaning::Kind::kMember, position, i, 0}, is_public, true, false});
  }
  for (std::size_t i = 0; i < module.procedures.size(); ++i) {
    const auto& procedure = module.procedures[i];
    const bool is_public = is_standard && procedure.scope == Scope::kPublic;
    AddEntry(procedure.name, {{Meaning::Kind::kProcedure, position, i, 0}, is_public, true, false});
  }
}

void ProjectNames::AddDeclarations(std::size_t module) {
  const auto& declarations = modules_[module]->declarations;
  for (std::size_t i = 0; i < declarations.size(); ++i) {
    const auto& declaration = declarations[i];
    if (declaration.scope == Scope::kLocal) continue;
    const bool is_public = declaration.scope == Scope::kPublic;
    const auto* const enumeration = declaration.As<Enumeration>();
    const bool is_record = declaration.As<Record>() != nullptr;
    AddEntry(declaration.name, {{Meaning::Kind::kDeclaration, module, i, 0},
                                is_public,
                                !is_record,
                                IsSortOfType(declaration)});
    if (enumeration == nullptr) continue;
    for (std::size_t member = 0; member < enumeration->members.size(); ++member)
      AddEntry(enumeration->members[member].name,
               {{Meaning::Kind::kEnumMember, module, i, member}, is_public, true, false});
  }
}

void ProjectNames::AddEntry(std::u16string_view name, const Entry& entry) {
  LowerCaseInto(WithoutBrackets(name), lowered_);
  entries_[lowered_].push_back(entry);
}

const std::vector<ProjectNames::Entry>* ProjectNames::EntriesOf(std::u16string_view name) const {
  LowerCaseInto(WithoutBrackets(name), lowered_);
  const auto found = entries_.find(std::u16string_view(lowered_));
  return found == entries_.end() ? nullptr : &found->second;
}

std::vector<Meaning> ProjectNames::Find(std::size_t module, std::u16string_view name,
                                        Sort sort) const {
  std::vector<Meaning> own;
  std::vector<Meaning> others;
  const auto* const entries = EntriesOf(name);
  if (entries == nullptr) return own;
  for (const auto& entry : *entries) {
    if (!(sort == Sort::kType ? entry.is_type : entry.is_value)) continue;
    // Every module knows the others by name, and itself no better than they do.
    const bool is_own =
        entry.meaning.module == module && entry.meaning.kind != Meaning::Kind::kModule;
    if (is_own) {
      own.push_back(entry.meaning);
    } else if (entry.is_public) {
      others.push_back(entry.meaning);
    }
  }
  return own.empty() ? others : own;
}

std::vector<Meaning> ProjectNames::FindValue(std::size_t module, std::u16string_view name) const {
  return Find(module, name, Sort::kValue);
}

std::vector<Meaning> ProjectNames::FindType(std::size_t module, std::u16string_view name) const {
  return Find(module, name, Sort::kType);
}

std::vector<Meaning> ProjectNames::MeaningsOf(std::size_t module, const NameUse& use) const {
  if (!use.qualifier.empty()) return FindQualified(module, use);
  if (use.kind == UseKind::kType) return FindType(module, use.name);
  auto values = FindValue(module, use.name);
  return values.empty() && use.kind == UseKind::kMeasured ? FindType(module, use.name) : values;
}

std::vector<Meaning> ProjectNames::FindQualified(std::size_t module, const NameUse& use) const {
  auto qualifier = use.qualifier;
  if (const auto dot = qualifier.find(u'.'); dot != qualifier.npos) {
    if (!EqualIgnoringCase(WithoutBrackets(qualifier.substr(0, dot)), project_name_) &&
        FindValue(module, qualifier.substr(0, dot)).empty())
      return {};
    qualifier = qualifier.substr(dot + 1);
  }
  std::vector<Meaning> found;
  const auto* const entries = EntriesOf(use.name);
  if (entries == nullptr) return found;
  const auto holders = FindValue(module, qualifier);
  const bool is_project =
      !project_name_.empty() && EqualIgnoringCase(WithoutBrackets(qualifier), project_name_);
  for (const auto& entry : *entries) {
    const auto& meaning = entry.meaning;
    if (!(use.kind == UseKind::kType ? entry.is_type : entry.is_value)) continue;
    if (meaning.module != module && !entry.is_public) continue;
    const bool is_held = std::ranges::any_of(holders, [&](const Meaning& holder) {
      if (holder.module != meaning.module) return false;
      if (holder.kind == Meaning::Kind::kModule) return meaning.kind != Meaning::Kind::kModule;
      return meaning.kind == Meaning::Kind::kEnumMember &&
             holder.kind == Meaning::Kind::kDeclaration && holder.position == meaning.position;
    });
    if (is_held || is_project) found.push_back(meaning);
  }
  return found;
}

Place ProjectNames::PlaceOf(const Meaning& meaning) const {
  const auto& module = *modules_[meaning.module];
  switch (meaning.kind) {
    case Meaning::Kind::kDeclaration:
      return module.declarations[meaning.position].name_place;
    case Meaning::Kind::kEnumMember:
      return module.declarations[meaning.position].As<Enumeration>()->members[meaning.inside].place;
    case Meaning::Kind::kMember:
      return module.members[meaning.position].place;
    case Meaning::Kind::kProcedure:
      return module.procedures[meaning.position].place;
    case Meaning::Kind::kModule:
      break;
  }
  return {};
}

const Declaration* ProjectNames::DeclarationOf(const Meaning& meaning) const {
  const bool is_declared =
      meaning.kind == Meaning::Kind::kDeclaration || meaning.kind == Meaning::Kind::kEnumMember;
  return is_declared ? &modules_[meaning.module]->declarations[meaning.position] : nullptr;
}

}  // namespace declarium::vb
