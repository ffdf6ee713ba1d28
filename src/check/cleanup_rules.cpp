#include <algorithm>
#include <unordered_map>

#include "check/rule_groups.h"
#include "facts/dll_key.h"
#include "text/text.h"

namespace declarium::check {
namespace {

bool IsLocal(const vb::Declaration& declaration) {
  return declaration.scope == vb::Scope::kLocal;
}

// Whether a name stands anywhere but in the declarations of that name.
bool IsUsed(const NameCounts& uses, std::u16string_view name, std::size_t module, vb::Scope scope) {
  return scope == vb::Scope::kPublic ? uses.IsUsed(name) : uses.IsUsedIn(module, name);
}

bool IsUsed(const NameCounts& uses, const vb::Declaration& declaration, std::size_t module) {
  const auto scope = declaration.scope;
  if (IsUsed(uses, declaration.name, module, scope)) return true;
  const auto* const enumeration = declaration.As<vb::Enumeration>();
  return enumeration != nullptr &&
         std::ranges::any_of(enumeration->members, [&](const vb::EnumMember& member) {
           return IsUsed(uses, member.name, module, scope);
         });
}

void CheckUnused(const ModuleContext& module, const NameCounts& uses) {
  const bool is_project = module.whole.Checked().form == Subject::Form::kProject;
  // A class of a component is used by programs that are not here.
  const bool sees_all_users = is_project && module.parsed.kind == vb::ModuleKind::kStandard;
  for (const auto& declaration : module.parsed.declarations) {
    const bool is_private = declaration.scope == vb::Scope::kPrivate;
    const bool is_decided = is_private || (sees_all_users && !IsLocal(declaration));
    if (!is_decided || !module.SystemsOf(declaration).Any() ||
        IsUsed(uses, declaration, module.module))
      continue;
    module.Report(RuleId::kUnused, declaration, declaration.name_place,
                  ToUtf8(declaration.name) + " is not used");
  }
}

void CheckOtherNames(const ModuleContext& module) {
  for (const auto& declaration : module.parsed.declarations) {
    const auto* const external = declaration.As<vb::External>();
    if (external == nullptr) continue;
    const auto* const known = module.whole.Libraries().FindEntry(
        DllKey(external->library), external->EntryOr(declaration.name), declaration.name);
    if (known == nullptr || EqualIgnoringCase(known->Name(), declaration.name)) continue;
    module.Report(RuleId::kOtherName, declaration, declaration.name_place,
                  "the library has it as " + ToUtf8(known->Name()));
  }
}

// What two declarations must have in common to be the same: the kind and its text without scope
// and letter case, without regard to blanks.
std::u16string MeaningOf(const vb::Declaration& declaration) {
  std::u16string meaning;
  vb::Tokenizer tokens(declaration.text);
  bool is_scope = true;
  for (auto token = tokens.NextSignificant(); token.kind != vb::TokenKind::kEnd;
       token = tokens.NextSignificant()) {
    is_scope = is_scope &&
               (token.IsWord(u"public") || token.IsWord(u"private") || token.IsWord(u"global"));
    if (is_scope || token.kind == vb::TokenKind::kComment) continue;
    meaning += LowerCase(token.text);
    meaning += u' ';
  }
  return meaning;
}

void CheckTwice(const ModuleContext& module, const NameCounts& uses,
                std::unordered_map<std::u16string, std::size_t>& first_modules) {
  for (const auto& declaration : module.parsed.declarations) {
    const bool is_value = declaration.As<vb::Enumeration>() == nullptr;
    if (!is_value || IsLocal(declaration) || !module.SystemsOf(declaration).Any() ||
        !uses.IsDeclaredTwice(declaration.name))
      continue;
    const auto [first, is_new] = first_modules.try_emplace(MeaningOf(declaration), module.module);
    if (is_new || first->second == module.module) continue;
    module.Report(RuleId::kDeclaredTwice, declaration, declaration.name_place,
                  ToUtf8(declaration.name) + " is declared in another module too");
  }
}

}  // namespace

void CheckCleanUp(const std::deque<ModuleContext>& modules, const NameCounts& uses) {
  std::unordered_map<std::u16string, std::size_t> first_modules;
  for (const auto& module : modules) {
    const auto form = module.whole.Checked().form;
    CheckOtherNames(module);
    if (form != Subject::Form::kLibrary) CheckUnused(module, uses);
    if (form == Subject::Form::kProject) CheckTwice(module, uses, first_modules);
  }
}

}  // namespace declarium::check
