#include "plan/presence.h"

#include <algorithm>

#include "plan/declaration_section.h"
#include "plan/meaning.h"
#include "text/text.h"

namespace declarium::plan {
namespace {

using MeaningKind = vb::Meaning::Kind;

std::vector<vb::Target> TargetsOf(vb::Audience audience) {
  switch (audience) {
    case vb::Audience::kVb6:
      return {vb::Target::kVb6};
    case vb::Audience::kVba7:
      return {vb::Target::kVb6, vb::Target::kVba7x32, vb::Target::kVba7x64};
    case vb::Audience::kVba7Only:
      return {vb::Target::kVba7x32, vb::Target::kVba7x64};
    case vb::Audience::kTwinBasic:
      return {vb::Target::kTwinBasic};
  }
  return {};
}

Holder HolderOf(const vb::Declaration& declaration) {
  const auto kind = KindOf(declaration);
  if (!kind) return Holder::kEnum;
  constexpr Holder kHolders[] = {Holder::kConst, Holder::kDeclare, Holder::kType};
  return kHolders[KindCode(*kind)];
}

Holder HolderOf(vb::ModuleMember::Kind kind) {
  switch (kind) {
    case vb::ModuleMember::Kind::kVariable:
      return Holder::kVariable;
    case vb::ModuleMember::Kind::kEvent:
      return Holder::kEvent;
    case vb::ModuleMember::Kind::kControl:
      return Holder::kControl;
  }
  return Holder::kVariable;
}

// The line of the text that holds the place, without its end.
std::u16string_view LineAt(std::u16string_view text, const vb::Place& place) {
  if (place.offset >= text.size()) return {};
  const auto line = text.substr(place.offset - (place.column - 1));
  return line.substr(0, line.find_first_of(u"\r\n"));
}

}  // namespace

std::string_view DoesText(Does does) {
  constexpr std::string_view kTexts[] = {"insert", "present", "differs", "clash"};
  return kTexts[static_cast<std::size_t>(does)];
}

std::string_view HolderText(Holder holder) {
  constexpr std::string_view kTexts[] = {"constant",          "Declare",  "Type",  "Enum",
                                         "member of an Enum", "variable", "event", "control",
                                         "procedure",         "module"};
  return kTexts[static_cast<std::size_t>(holder)];
}

PresenceFinder::PresenceFinder(ProjectModules& project, std::size_t module, vb::Audience target,
                               std::span<const vb::Module* const> wanted)
    : project_(project), module_(module) {
  for (const auto system : TargetsOf(target)) {
    auto& added = systems_.emplace_back(
        system, vb::Definitions(system, &project_.DefinitionsOf(module_, system)));
    for (const auto* const each : wanted) added.definitions.Add(*each);
  }
}

std::vector<PresenceFinder::Occurrence> PresenceFinder::OccurrencesOf(
    Kind kind, std::u16string_view name) const {
  const auto& names = project_.Names();
  std::vector<Occurrence> occurrences;
  for (const auto& meaning :
       kind == Kind::kType ? names.FindType(module_, name) : names.FindValue(module_, name)) {
    Occurrence occurrence{meaning, 0, 0};
    if (const auto* const declaration = names.DeclarationOf(meaning)) {
      occurrence.condition = declaration->condition;
      if (meaning.kind == MeaningKind::kEnumMember)
        occurrence.member_condition =
            declaration->As<vb::Enumeration>()->members[meaning.inside].condition;
    } else if (meaning.kind == MeaningKind::kMember) {
      occurrence.condition = names.ModuleAt(meaning.module).members[meaning.position].condition;
    }
    occurrences.push_back(occurrence);
  }
  return occurrences;
}

vb::Branch PresenceFinder::BranchOf(const Occurrence& occurrence, vb::Target target) {
  const auto& branches = project_.BranchesOf(occurrence.meaning.module, target);
  const auto outer = branches[occurrence.condition];
  const auto inner = branches[occurrence.member_condition];
  if (outer == vb::Branch::kLeftOut || inner == vb::Branch::kLeftOut) return vb::Branch::kLeftOut;
  const bool is_compiled = outer == vb::Branch::kCompiled && inner == vb::Branch::kCompiled;
  return is_compiled ? vb::Branch::kCompiled : vb::Branch::kUnknown;
}

bool PresenceFinder::HasKind(const Occurrence& occurrence, Kind kind) const {
  if (occurrence.meaning.kind != MeaningKind::kDeclaration) return false;
  return KindOf(*project_.Names().DeclarationOf(occurrence.meaning)) == kind;
}

bool PresenceFinder::IsSame(const Occurrence& occurrence, Kind kind, const vb::Module& wanted,
                            System& system) {
  const auto& meaning = occurrence.meaning;
  const bool is_member = meaning.kind == MeaningKind::kEnumMember && kind == Kind::kConst;
  if (!is_member && !HasKind(occurrence, kind)) return false;
  const auto& found = *project_.Names().DeclarationOf(meaning);
  auto& definitions = project_.DefinitionsOf(meaning.module, system.target);
  const auto branches = vb::BranchesOf(wanted, system.target);
  return std::ranges::any_of(wanted.declarations, [&](const vb::Declaration& declaration) {
    if (branches[declaration.condition] == vb::Branch::kLeftOut || KindOf(declaration) != kind)
      return false;
    if (!is_member) return MeanTheSame({&found, &definitions}, {&declaration, &system.definitions});
    const auto here =
        definitions.ValueOf(found.As<vb::Enumeration>()->members[meaning.inside].name);
    const auto there = system.definitions.ValueOf(*declaration.As<vb::Constant>());
    return here && there && IsSameValue(*here, *there);
  });
}

Found PresenceFinder::FoundAt(const Occurrence& occurrence) const {
  const auto& meaning = occurrence.meaning;
  const auto& names = project_.Names();
  const auto& module = names.ModuleAt(meaning.module);
  const auto place = names.PlaceOf(meaning);
  Found found{meaning.module,
              std::u16string(project_.NameOf(meaning.module)),
              place.line,
              Holder::kModule,
              {}};
  if (const auto* const declaration = names.DeclarationOf(meaning)) {
    const bool is_member = meaning.kind == MeaningKind::kEnumMember;
    found.holder = is_member ? Holder::kEnumMember : HolderOf(*declaration);
    found.text = declaration->text;
    if (!is_member) found.line = declaration->place.line;
    return found;
  }
  if (meaning.kind == MeaningKind::kModule) return found;
  found.holder = meaning.kind == MeaningKind::kProcedure
                     ? Holder::kProcedure
                     : HolderOf(module.members[meaning.position].kind);
  found.text = LineAt(project_.At(meaning.module).text, place);
  return found;
}

MissingBranches PresenceFinder::BranchesWithout(std::span<const Occurrence> occurrences) const {
  const auto& conditions = project_.At(module_).parsed->conditions;
  std::vector<const vb::Condition*> declared;
  for (const auto& occurrence : occurrences)
    if (occurrence.meaning.module == module_) declared.push_back(&conditions[occurrence.condition]);
  return MissingBranches(declared);
}

Presence PresenceFinder::Find(Kind kind, std::u16string_view name, const vb::Module& wanted) {
  const auto occurrences = OccurrencesOf(kind, name);
  std::optional<Occurrence> counting;
  std::size_t systems_with = 0;
  bool is_in_branch = false;
  for (auto& system : systems_) {
    bool is_here = false;
    for (const auto& occurrence : occurrences) {
      const auto branch = BranchOf(occurrence, system.target);
      if (branch == vb::Branch::kLeftOut) continue;
      if (!IsSame(occurrence, kind, wanted, system)) {
        const auto does = HasKind(occurrence, kind) ? Does::kDiffers : Does::kClash;
        return {does, FoundAt(occurrence), {}};
      }
      if (!counting) counting = occurrence;
      // Which branches of another module are compiled cannot be made good here.
      const bool is_own = occurrence.meaning.module == module_;
      if (branch == vb::Branch::kCompiled || !is_own) is_here = true;
    }
    if (is_here) ++systems_with;
    is_in_branch = is_in_branch || (!is_here && counting);
  }
  if (!counting) return {};
  if (systems_with == systems_.size()) return {Does::kPresent, FoundAt(*counting), {}};
  if (systems_with > 0 || !is_in_branch) return {Does::kDiffers, FoundAt(*counting), {}};
  auto branches = BranchesWithout(occurrences);
  if (branches.AreNone()) return {Does::kPresent, FoundAt(*counting), {}};
  return {Does::kInsert, FoundAt(*counting), std::move(branches)};
}

}  // namespace declarium::plan
