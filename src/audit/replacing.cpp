#include "audit/replacing.h"

#include <algorithm>
#include <array>

#include "facts/dll_key.h"
#include "plan/meaning.h"
#include "text/text.h"
#include "vb/name_use.h"

namespace declarium::audit {
namespace {

template <std::size_t kCount>
bool IsOneOf(const std::array<std::u16string_view, kCount>& names, std::u16string_view name) {
  return std::ranges::any_of(names,
                             [&](const auto& each) { return EqualIgnoringCase(each, name); });
}

bool IsWhole(const vb::TypeReference& type) {
  constexpr std::array<std::u16string_view, 3> kNames = {u"Byte", u"Integer", u"Long"};
  return IsOneOf(kNames, type.name);
}

// Of which a value of any other can be made, so that ByVal takes what ByRef took.
bool IsOfTheLanguage(const vb::TypeReference& type) {
  constexpr std::array<std::u16string_view, 11> kNames = {
      u"Byte", u"Integer", u"Long",   u"Boolean", u"Single",  u"Double",
      u"Date", u"String",  u"Object", u"Variant", u"Currency"};
  return IsOneOf(kNames, type.name);
}

bool IsSameType(const vb::TypeReference& a, const vb::TypeReference& b) {
  return EqualIgnoringCase(a.name, b.name) && a.is_array == b.is_array &&
         a.length.empty() == b.length.empty();
}

bool HoldsTheSame(const vb::TypeReference& old, const vb::TypeReference& form) {
  return IsSameType(old, form) || (IsWhole(old) && IsWhole(form));
}

bool TakesTheSame(const vb::Parameter& old, const vb::Parameter& form) {
  if (old.is_optional != form.is_optional || old.is_param_array != form.is_param_array ||
      old.is_array != form.is_array)
    return false;
  const bool is_by_value = form.passing == vb::Passing::kByValue;
  if (IsSameType(old.type, form.type))
    return old.passing == form.passing || (is_by_value && IsOfTheLanguage(form.type));
  // ByRef takes variables of its own type alone.
  return is_by_value && IsWhole(old.type) && IsWhole(form.type);
}

bool FitsCalls(const vb::External& old, const vb::External& form) {
  return old.is_function == form.is_function && old.is_ptr_safe == form.is_ptr_safe &&
         old.is_wide == form.is_wide && old.parameters.size() == form.parameters.size() &&
         (!old.is_function || HoldsTheSame(old.result, form.result)) &&
         std::ranges::equal(old.parameters, form.parameters, TakesTheSame);
}

bool IsSameMember(const vb::Member& old, const vb::Member& form) {
  return EqualIgnoringCase(old.name, form.name) && old.is_array == form.is_array &&
         old.dimensions.size() == form.dimensions.size() && HoldsTheSame(old.type, form.type);
}

Obstacle ToReplaceRecord(const vb::Declaration& old, const vb::Declaration& form) {
  const auto& [members, comments] = *old.As<vb::Record>();
  const auto& new_members = form.As<vb::Record>()->members;
  const bool has_branches = std::ranges::any_of(
      members, [&](const vb::Member& member) { return member.condition != old.condition; });
  if (has_branches) return Obstacle::kCondition;
  const bool has_all = std::ranges::all_of(members, [&](const vb::Member& member) {
    return std::ranges::any_of(
        new_members, [&](const vb::Member& other) { return IsSameMember(member, other); });
  });
  if (members.size() != new_members.size() || !has_all) return Obstacle::kOtherMembers;
  return comments.empty() ? Obstacle::kNone : Obstacle::kHoldsComments;
}

// In lower case.
std::set<std::u16string> NamesIn(std::u16string_view text, const vb::Module& parsed) {
  std::set<std::u16string> names;
  for (const auto& use : vb::ReadNameUses(text, parsed)) names.insert(LowerCase(use.name));
  return names;
}

bool UsesOtherNames(const vb::Declaration& old, const LibraryForm& form) {
  const auto names = NamesIn(old.text, vb::ReadModule(old.text));
  return !std::ranges::includes(names, NamesIn(form.Source(), form.Parsed()));
}

void AddNamedArguments(std::u16string_view text, std::set<std::u16string>& names) {
  for (auto at = text.find(u":="); at != text.npos; at = text.find(u":=", at + 2)) {
    auto end = at;
    while (end > 0 && (text[end - 1] == u' ' || text[end - 1] == u'\t')) --end;
    const auto before = text.substr(0, end);
    const auto begin = before.find_last_of(u" \t\r\n,()") + 1;
    names.insert(LowerCase(vb::WithoutBrackets(before.substr(begin))));
  }
}

}  // namespace

Obstacle Replacing::ToReplace(std::size_t row, const LibraryForm& form, bool calls_nothing) {
  const auto& old = *rows_[row].declaration;
  const auto* const declared = form.Declared();
  if (declared == nullptr || declared->what.index() != old.what.index())
    return Obstacle::kUnreadable;
  if (SaysTheSame(row, *declared)) return Obstacle::kSaysTheSame;
  if (const auto obstacle = certainty_.ToChange(row); obstacle != Obstacle::kNone) return obstacle;
  if (rows_[row].may_be_used_elsewhere)
    return subject_.is_whole ? Obstacle::kShownByClass : Obstacle::kMissingModules;
  if (UsesOtherNames(old, form)) return Obstacle::kOtherNames;
  if (old.As<vb::External>() != nullptr) return ToReplaceExternal(old, *declared, calls_nothing);
  if (old.As<vb::Record>() != nullptr) return ToReplaceRecord(old, *declared);
  return ToReplaceConstant(row, *declared);
}

bool Replacing::SaysTheSame(std::size_t row, const vb::Declaration& form) {
  auto& names = NamesFor(row);
  return plan::MeanTheSame({rows_[row].declaration, &names}, {&form, &names});
}

Obstacle Replacing::ToReplaceExternal(const vb::Declaration& old, const vb::Declaration& form,
                                      bool calls_nothing) {
  const auto& external = *old.As<vb::External>();
  const auto& other = *form.As<vb::External>();
  const bool is_same_entry = DllKey(external.library) == DllKey(other.library) &&
                             external.EntryOr(old.name) == other.EntryOr(form.name);
  if (!is_same_entry && !calls_nothing) return Obstacle::kOtherEntry;
  if (!FitsCalls(external, other)) return Obstacle::kOtherCalls;
  return LosesNamedArgument(external, other) ? Obstacle::kNamedArguments : Obstacle::kNone;
}

Obstacle Replacing::ToReplaceConstant(std::size_t row, const vb::Declaration& form) {
  auto& names = NamesFor(row);
  const auto value = names.ValueOf(*rows_[row].declaration->As<vb::Constant>());
  const auto other = names.ValueOf(*form.As<vb::Constant>());
  // What the names in the library's value stand for in the project may be something else.
  const auto known = libraries_.AsReference().ValueOf(form.name);
  if (!value || !other || !known || !plan::IsSameValue(*other, *known))
    return Obstacle::kOtherValue;
  const bool is_text = value->type == vb::Value::Type::kString;
  return is_text == (other->type == vb::Value::Type::kString) ? Obstacle::kNone
                                                              : Obstacle::kOtherValue;
}

bool Replacing::LosesNamedArgument(const vb::External& old, const vb::External& form) {
  if (!named_arguments_) {
    named_arguments_.emplace();
    for (const auto& module : subject_.modules) AddNamedArguments(module.text, *named_arguments_);
  }
  for (std::size_t i = 0; i < old.parameters.size(); ++i) {
    const auto name = old.parameters[i].name;
    if (EqualIgnoringCase(name, form.parameters[i].name)) continue;
    if (named_arguments_->contains(LowerCase(vb::WithoutBrackets(name)))) return true;
  }
  return false;
}

vb::Definitions& Replacing::NamesFor(std::size_t row) {
  return modules_.DefinitionsOf(rows_[row].module, vb::Target::kVb6);
}

}  // namespace declarium::audit
