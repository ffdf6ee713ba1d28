#include "check/context.h"

#include <functional>
#include <utility>

#include "text/scan.h"
#include "text/text.h"

namespace declarium::check {
namespace {

std::u16string_view Unqualified(std::u16string_view name) {
  if (const auto dot = name.rfind(u'.'); dot != name.npos) name.remove_prefix(dot + 1);
  if (name.starts_with(u'[') && name.ends_with(u']')) name = name.substr(1, name.size() - 2);
  return name;
}

vb::Target Target32(Audience audience) {
  return audience == Audience::kVb6 ? vb::Target::kVb6 : vb::Target::kVba7x32;
}

vb::Target Target64(Audience audience) {
  return audience == Audience::kTwinBasic ? vb::Target::kTwinBasic : vb::Target::kVba7x64;
}

std::vector<Systems> SystemsByCondition(const vb::Module& module, Audience audience,
                                        vb::ProjectConstants constants) {
  std::vector<Systems> systems(module.conditions.size());
  const auto add = [&](vb::Target target, bool Systems::* system) {
    const auto branches = vb::BranchesOf(module, target, constants);
    for (std::size_t i = 0; i < systems.size(); ++i) {
      systems[i].*system = branches[i] != vb::Branch::kLeftOut;
      systems[i].is_certain = systems[i].is_certain && branches[i] != vb::Branch::kUnknown;
      systems[i].condition = static_cast<std::uint32_t>(i);
    }
  };
  const bool is_vba = audience == Audience::kVba7 || audience == Audience::kVba7Only;
  if (audience == Audience::kVb6 || audience == Audience::kVba7)
    add(vb::Target::kVb6, &Systems::vb6);
  if (is_vba) add(vb::Target::kVba7x32, &Systems::vba32);
  if (is_vba) add(vb::Target::kVba7x64, &Systems::vba64);
  if (audience == Audience::kTwinBasic) add(vb::Target::kTwinBasic, &Systems::twin_basic);
  return systems;
}

}  // namespace

Context::Context(const Subject& subject, Reference& reference, const Options& options)
    : subject_(subject),
      reference_(reference),
      options_(options),
      definitions32_(Target32(options.audience)),
      definitions64_(Target64(options.audience)) {
  for (std::size_t i = 0; i < subject.modules.size(); ++i) {
    const auto& module = *subject.modules[i].parsed;
    definitions32_.Add(module, subject.constants);
    if (Checks64Bits()) definitions64_.Add(module, subject.constants);
    for (const auto& declaration : module.declarations) {
      if (declaration.As<vb::Record>() != nullptr || declaration.As<vb::Enumeration>() != nullptr)
        types_[LowerCase(declaration.name)].push_back({&declaration, i});
    }
  }
}

const DeclaredType* Context::FindType(std::u16string_view name, std::size_t module) const {
  const auto found = types_.find(LowerCase(Unqualified(name)));
  if (found == types_.end()) return nullptr;
  const DeclaredType* other = nullptr;
  for (const auto& type : found->second) {
    if (type.module == module) return &type;
    if (other == nullptr && type.declaration->scope == vb::Scope::kPublic) other = &type;
  }
  return other;
}

const vb::Record* Context::FindRecord(std::u16string_view name, std::size_t module) const {
  const auto* const type = FindType(name, module);
  return type == nullptr ? nullptr : type->declaration->As<vb::Record>();
}

ModuleContext::ModuleContext(Context& all, std::size_t position)
    : whole(all),
      module(position),
      text(all.Checked().modules[position].text),
      parsed(*all.Checked().modules[position].parsed),
      systems_(SystemsByCondition(parsed, all.Wanted().audience, all.Checked().constants)) {}

const vb::Record* ModuleContext::FindSizedRecord(std::u16string_view name,
                                                 std::u16string_view member) const {
  const auto* const record = whole.FindRecord(name, module);
  const bool is_size = record != nullptr && !record->members.empty() && IsSizeMember(member) &&
                       EqualIgnoringCase(record->members.front().name, member);
  return is_size ? record : nullptr;
}

vb::Definitions& ModuleContext::Made(std::optional<vb::Definitions>& definitions,
                                     vb::Definitions& all) const {
  if (whole.Checked().modules.size() == 1) return all;  // they are the same
  if (!definitions) {
    definitions.emplace(all.TargetSystem(), &all);
    definitions->Add(parsed, whole.Checked().constants);
  }
  return *definitions;
}

Finding& ModuleContext::Report(RuleId rule, const vb::Declaration& declaration,
                               const vb::Place& place, std::string message) const {
  auto& finding = Report(rule, place, declaration.name, std::move(message));
  finding.statement_line = declaration.place.line;
  finding.statement_end = declaration.end_line;
  return finding;
}

Finding& ModuleContext::Report(RuleId rule, const vb::Place& place, std::u16string_view name,
                               std::string message) const {
  return whole.findings.emplace_back(Finding{rule, RuleOf(rule).level, module, place, ToUtf8(name),
                                             std::move(message), place.line, place.line});
}

vb::Place ModuleContext::PlaceOf(const vb::Declaration& declaration,
                                 std::u16string_view part) const {
  auto place = declaration.place;
  if (!Holds(part)) return place;
  const auto end = static_cast<std::size_t>(part.data() - text.data());
  for (; place.offset < end; ++place.offset) {
    const bool is_line_end = text[place.offset] == u'\n' ||
                             (text[place.offset] == u'\r' && place.offset + 1 < text.size() &&
                              text[place.offset + 1] != u'\n');
    place.line += is_line_end ? 1 : 0;
    place.column = is_line_end ? 1 : place.column + 1;
  }
  return place;
}

bool ModuleContext::Holds(std::u16string_view part) const {
  const std::less_equal<> before;
  return before(text.data(), part.data()) &&
         before(part.data() + part.size(), text.data() + text.size());
}

Edit ModuleContext::Replacing(std::u16string_view part, std::u16string_view by) const {
  return {static_cast<std::size_t>(part.data() - text.data()), part.size(), std::u16string(by)};
}

Edit ModuleContext::Behind(std::u16string_view part, std::u16string_view what) const {
  return {static_cast<std::size_t>(part.data() - text.data()) + part.size(), 0,
          std::u16string(what)};
}

bool IsType(const vb::TypeReference& type, std::u16string_view name) {
  return !type.is_array && type.length.empty() && EqualIgnoringCase(type.name, name);
}

bool IsSizeMember(std::u16string_view name) {
  constexpr std::u16string_view kLength = u"length";
  return EqualIgnoringCase(name.substr(0, 2), u"cb") ||
         FindIgnoringCase(name, u"size") != name.npos ||
         (name.size() >= kLength.size() &&
          EqualIgnoringCase(name.substr(name.size() - kLength.size()), kLength));
}

std::string Quoted(std::u16string_view text) {
  return '"' + ToUtf8(text) + '"';
}

}  // namespace declarium::check
