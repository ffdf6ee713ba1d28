#include "check/ambiguous_names.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <set>

#include "check/row_table.h"
#include "text/text.h"
#include "vb/name_use.h"
#include "vb/runtime_names.h"

namespace declarium::check {
namespace {

// A public declaration.
struct Published {
  std::u16string_view name;
  const ModuleContext* module;
  std::uint32_t condition;

  [[nodiscard]] const Systems& CompiledBy() const { return module->SystemsOf(condition); }
};

// What standard modules make public, values or types.
class PublishedNames {
 public:
  // Another module's declaration of the same name that the same systems certainly compile; null for
  // none.
  const Published* Add(const Published& added) {
    const auto found = by_name_.Find(added.name, [&](std::uint32_t row) {
      const auto& other = rows_[row];
      return other.module != added.module && EqualIgnoringCase(other.name, added.name) &&
             other.CompiledBy().is_certain && added.CompiledBy().is_certain &&
             other.CompiledBy().Share(added.CompiledBy());
    });
    by_name_.Add(added.name, static_cast<std::uint32_t>(rows_.size()));
    rows_.push_back(added);
    return found < 0 ? nullptr : &rows_[static_cast<std::size_t>(found)];
  }

 private:
  RowTable by_name_;
  std::deque<Published> rows_;
};

// Calls take(name, condition, is_type) for what the module makes public.
template <class Take>
void ForEachPublic(const vb::Module& module, const Take& take) {
  for (const auto& declaration : module.declarations) {
    const bool is_enumeration = declaration.As<vb::Enumeration>() != nullptr;
    if (declaration.scope != vb::Scope::kPublic || is_enumeration) continue;
    take(declaration.name, declaration.condition, declaration.As<vb::Record>() != nullptr);
  }
  for (const auto& procedure : module.procedures) {
    if (procedure.scope == vb::Scope::kPublic) take(procedure.name, procedure.condition, false);
  }
  for (const auto& member : module.members) {
    const bool is_variable = member.kind == vb::ModuleMember::Kind::kVariable;
    if (is_variable && member.scope == vb::Scope::kPublic)
      take(member.name, member.condition, false);
  }
}

// The names that a module declares itself.
class OwnNames {
 public:
  explicit OwnNames(const vb::Module& module)
      : is_designer_(module.kind != vb::ModuleKind::kStandard &&
                     module.kind != vb::ModuleKind::kClass) {
    for (const auto& declaration : module.declarations) {
      if (declaration.scope != vb::Scope::kLocal) Add(declaration.name);
      if (const auto* const enumeration = declaration.As<vb::Enumeration>())
        for (const auto& member : enumeration->members) Add(member.name);
    }
    for (const auto& procedure : module.procedures) Add(procedure.name);
    for (const auto& member : module.members) Add(member.name);
  }

  void Add(std::u16string_view name) { names_.insert(LowerCase(name)); }
  [[nodiscard]] bool Has(const std::u16string& lowered) const {
    return names_.contains(lowered) || (is_designer_ && vb::IsMemberOfDesigner(lowered));
  }

 private:
  std::set<std::u16string, std::less<>> names_;
  bool is_designer_;  // its object's own members come before what modules declare
};

}  // namespace

AmbiguousNames::AmbiguousNames(const std::deque<ModuleContext>& modules, NameCounts& names) {
  if (modules.empty()) return;
  const auto& whole = modules.front().whole;
  if (whole.Checked().form != Subject::Form::kProject || !whole.Checked().is_listed ||
      whole.Wanted().audience == Audience::kTwinBasic)
    return;
  PublishedNames values;
  PublishedNames types;
  for (const auto& module : modules) {
    if (module.parsed.kind != vb::ModuleKind::kStandard) continue;
    ForEachPublic(module.parsed, [&](auto name, std::uint32_t condition, bool is_type) {
      const auto* const other = (is_type ? types : values).Add({name, &module, condition});
      if (other != nullptr)
        (is_type ? types_ : values_).try_emplace(LowerCase(name), other->module, &module);
    });
  }
  // A module's own name says the module.
  for (const auto& module : modules) values_.erase(LowerCase(module.parsed.Name()));
  for (const auto* const ambiguous : {&values_, &types_})
    for (const auto& [name, by] : *ambiguous) names.Watch(name, Watched::kAmbiguous);
}

void AmbiguousNames::Check(const ModuleContext& module) const {
  const OwnNames own(module.parsed);
  std::set<std::u16string> reported;
  for (const auto& use : vb::ReadNameUses(module.text, module.parsed)) {
    const auto& systems = module.SystemsOf(use.condition);
    if (!use.qualifier.empty() || !systems.Any() || !systems.is_certain) continue;
    const auto& names = use.kind == vb::UseKind::kType ? types_ : values_;
    const auto found = names.find(LowerCase(use.name));
    if (found == names.end() || own.Has(found->first) || !reported.insert(found->first).second)
      continue;
    Report(module, use, found->second);
  }
}

void AmbiguousNames::Report(const ModuleContext& module, const vb::NameUse& use,
                            const Publishers& by) const {
  const auto first = by.first->parsed.Name();
  const auto second = by.second->parsed.Name();
  const bool has_names = !first.empty() && !second.empty();
  module.Report(
      RuleId::kAmbiguousName, use.place, use.name,
      ToUtf8(use.name) + " is public in " +
          (has_names ? ToUtf8(first) + " and in " + ToUtf8(second) : std::string("two modules")));
}

}  // namespace declarium::check
