#include "audit/certainty.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_set>

#include "text/text.h"
#include "vb/name_use.h"
#include "vb/runtime_names.h"

namespace declarium::audit {
namespace {

constexpr std::string_view kObstacleTexts[] = {
    "",
    "it stands inside #If",
    "its module has lines that cannot be read",
    "another project has the module, too",
    "something else stands on its lines",
    "not all modules of the project are there",
    "a comment keeps it",
    "something that stays needs it",
    "the others of the name differ",
    "types or names of parameters differ",
    "code may name it in front of its members",
    "a class shows it to others",
    "no standard module declares it",
    "something else has the name, too",
    "code names a module in front of it",
    "another module has the name from elsewhere",
    "it holds a record that is Private",
    "it was left out",
    "the library's form differs in its words alone",
    "the library's form cannot be read",
    "the library's form calls another procedure",
    "calls do not fit the library's form",
    "code names its parameters, which the library's form names otherwise",
    "the library's record has other members",
    "the library's value is of another kind",
    "the library's form uses names that this one does not",
    "it holds comments",
    "it becomes the one for other modules first",
};

bool IsStandard(const Subject& subject, std::size_t module) {
  return subject.modules[module].parsed->kind == vb::ModuleKind::kStandard;
}

// Whether the declaration's lines hold nothing else but a comment, and that ends with them.
bool HasOwnLines(std::u16string_view text, const vb::Declaration& declaration,
                 const ModuleLines& lines) {
  const auto begin = static_cast<std::size_t>(declaration.text.data() - text.data());
  const auto first = lines.Start(declaration.place.line);
  const auto last = lines.Start(declaration.end_line);
  const auto end = begin + declaration.text.size();
  const auto line = lines.At(declaration.end_line);
  if (begin < first || end < last || end > last + line.size()) return false;
  const auto front = text.substr(first, begin - first);
  if (front.find_first_not_of(u" \t") != front.npos) return false;
  const auto behind = line.substr(end - last);
  const auto start = behind.find_first_not_of(u" \t");
  if (start == behind.npos) return true;
  return behind[start] == u'\'' && !behind.ends_with(u'_');
}

// What stands in a declaration that goes is no use.
bool IsThere(const Use& use, const Rest& rest) {
  return use.inside == kNoRow || rest.is_there[use.inside];
}

}  // namespace

std::string_view ObstacleText(Obstacle obstacle) {
  return kObstacleTexts[static_cast<std::size_t>(obstacle)];
}

Certainty::Certainty(const Subject& subject, const std::vector<Row>& rows, const Uses& uses,
                     const RowFinder& finder, const std::vector<ModuleLines>& lines)
    : subject_(subject), rows_(rows), uses_(uses) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    obstacles_.push_back(FindObstacle(i, finder, lines[rows[i].module]));
  FindOtherNames();
}

Obstacle Certainty::FindObstacle(std::size_t row, const RowFinder& finder,
                                 const ModuleLines& lines) const {
  const auto& [module, declaration, sort, is_public, elsewhere] = rows_[row];
  const auto& source = subject_.modules[module];
  if (declaration->condition != 0) return Obstacle::kCondition;
  if (!source.parsed->errors.empty()) return Obstacle::kFaults;
  if (!subject_.is_shared.empty() && subject_.is_shared[module]) return Obstacle::kOtherProject;
  if (finder.SharesStatement(row) || !HasOwnLines(source.text, *declaration, lines))
    return Obstacle::kSharesLine;
  return Obstacle::kNone;
}

// Procedures, variables, controls and modules have names, too.
void Certainty::FindOtherNames() {
  std::unordered_set<std::u16string> names;
  for (const auto& [name, text, parsed] : subject_.modules) {
    names.insert(LowerCase(name.empty() ? parsed->Name() : name));
    for (const auto& procedure : parsed->procedures)
      if (procedure.scope != vb::Scope::kPrivate)
        names.insert(LowerCase(vb::WithoutBrackets(procedure.name)));
    for (const auto& member : parsed->members)
      if (member.scope != vb::Scope::kPrivate || parsed->kind != vb::ModuleKind::kStandard)
        names.insert(LowerCase(vb::WithoutBrackets(member.name)));
  }
  names.insert(LowerCase(subject_.project_name));
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const auto name = uses_.NameOf(i);
    if (is_taken_.size() <= name) is_taken_.resize(name + 1);
    if (names.contains(LowerCase(vb::WithoutBrackets(rows_[i].declaration->name))))
      is_taken_[name] = true;
  }
}

std::set<std::size_t> Certainty::NamedWith(std::size_t name, const Rest& rest) const {
  std::set<std::size_t> modules;
  for (const auto position : uses_.OfName(name)) {
    const auto& use = uses_.All()[position];
    if (use.qualifier && IsThere(use, rest)) modules.insert(*use.qualifier);
  }
  return modules;
}

bool Certainty::IsUsedOutside(const std::vector<std::size_t>& group, const Rest& rest) const {
  std::set<std::size_t> modules;
  for (const auto row : group) modules.insert(rows_[row].module);
  return std::ranges::any_of(uses_.OfName(uses_.NameOf(group.front())), [&](std::size_t position) {
    const auto& use = uses_.All()[position];
    return IsThere(use, rest) && !use.qualifier && !modules.contains(use.module);
  });
}

std::size_t Certainty::KeeperOf(const std::vector<std::size_t>& group, const Rest& rest) const {
  auto keeper = kNoRow;
  for (const auto row : group) {
    if (!IsStandard(subject_, rows_[row].module)) continue;
    if (rest.is_public[row]) return row;
    if (keeper == kNoRow) keeper = row;
  }
  return keeper;
}

// Whether nothing else that is there has the name.
bool Certainty::IsAlone(const std::vector<std::size_t>& group, const Rest& rest) const {
  const auto name = uses_.NameOf(group.front());
  return !is_taken_[name] && std::ranges::all_of(uses_.RowsNamed(name), [&](std::size_t row) {
    return !rest.is_there[row] || std::ranges::find(group, row) != group.end();
  });
}

Obstacle Certainty::ToMerge(const std::vector<std::size_t>& group, const Likeness& likeness,
                            const Rest& rest, std::size_t& keeper) const {
  const auto front = group.front();
  for (const auto row : group)
    if (likeness.meaning[row] != likeness.meaning[front]) return Obstacle::kDiffers;
  for (const auto row : group)
    if (likeness.exchange[row] != likeness.exchange[front]) return Obstacle::kNotExchangeable;
  if (rows_[front].sort == Sort::kEnum) return Obstacle::kEnumeration;
  if (!subject_.is_whole) return Obstacle::kMissingModules;
  keeper = KeeperOf(group, rest);
  if (keeper == kNoRow) return Obstacle::kNoStandardModule;
  if (!IsAlone(group, rest)) return Obstacle::kNameTaken;
  return ToStandFor(group, keeper, rest);
}

Obstacle Certainty::ToStandFor(const std::vector<std::size_t>& group, std::size_t keeper,
                               const Rest& rest) const {
  const auto qualifiers = NamedWith(uses_.NameOf(keeper), rest);
  bool has_public = false;
  for (const auto row : group) {
    const auto module = rows_[row].module;
    has_public = has_public || rest.is_public[row];
    const bool changes = row != keeper || !rest.is_public[row];
    if (changes && obstacles_[row] != Obstacle::kNone) return obstacles_[row];
    if (rows_[row].declaration->condition != 0) return Obstacle::kCondition;
    if (row == keeper) continue;
    if (!IsStandard(subject_, module)) {
      if (rest.is_public[row]) return Obstacle::kShownByClass;
      if (vb::IsMemberOfDesigner(rows_[row].declaration->name)) return Obstacle::kNameTaken;
    }
    if (qualifiers.contains(module)) return Obstacle::kQualified;
  }
  if (!has_public && IsUsedOutside(group, rest)) return Obstacle::kOthersMeanIt;
  return Obstacle::kNone;
}

}  // namespace declarium::audit
