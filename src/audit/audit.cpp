#include "audit/audit.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "check/check.h"
#include "check/suppression.h"
#include "source/item_text.h"
#include "text/text.h"

namespace declarium::audit {
namespace {

using check::Level;
using check::RuleId;

std::optional<Kind> KindOf(Sort sort) {
  switch (sort) {
    case Sort::kConst:
      return Kind::kConst;
    case Sort::kDeclare:
      return Kind::kDeclare;
    case Sort::kType:
      return Kind::kType;
    case Sort::kEnum:
      break;
  }
  return std::nullopt;
}

// Whether the rule is about what a library has: entries, frames, and values and layouts.
bool ComparesWithLibrary(RuleId rule) {
  const auto group = static_cast<int>(rule) / 100;
  return group >= 2 && group <= 4;
}

class Auditor {
 public:
  Auditor(const Subject& subject, check::KnownLibraries& libraries)
      : subject_(subject),
        libraries_(libraries),
        modules_(subject.modules, subject.project_name, subject.constants),
        rows_(TableOf(subject)),
        finder_(subject, rows_),
        uses_(subject, modules_, rows_, finder_),
        lines_(LinesOf(subject)) {
    all_.is_there.assign(rows_.size(), true);
    for (const auto& row : rows_) all_.is_public.push_back(row.is_public);
    for (const auto& row : rows_) audit_.rows.push_back({row, {}, {}, {}});
  }

  Audit Run() {
    FindQuiet();
    FindPlaces();
    const Certainty certainty(subject_, rows_, uses_, finder_, lines_);
    const auto likeness = LikenessOf(modules_, rows_, uses_, all_);
    const auto fates = PlanCleanUp(rows_, uses_, certainty, likeness, all_, is_quiet_);
    for (std::size_t i = 0; i < rows_.size(); ++i) audit_.rows[i].fate = fates[i];
    ReportUnused();
    ReportTwins(likeness);
    if (!libraries_.AsReference().IsEmpty()) ReportDifferences();
    MakeEdits();
    return std::move(audit_);
  }

 private:
  static std::vector<ModuleLines> LinesOf(const Subject& subject) {
    std::vector<ModuleLines> lines;
    for (const auto& module : subject.modules) lines.emplace_back(module.text);
    return lines;
  }

  [[nodiscard]] check::Finding FindingOf(std::size_t row, RuleId rule, std::string message) const {
    const auto& [module, declaration, sort, is_public, elsewhere] = rows_[row];
    return {rule,
            check::RuleOf(rule).level,
            module,
            declaration->name_place,
            ToUtf8(declaration->name),
            std::move(message),
            declaration->place.line,
            declaration->end_line,
            {}};
  }

  void FindQuiet() {
    auto module = subject_.modules.size();
    std::optional<check::Suppressions> suppressions;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (rows_[i].module != module) suppressions.emplace(subject_.modules[rows_[i].module].text);
      module = rows_[i].module;
      is_quiet_.push_back(suppressions->Cover(FindingOf(i, RuleId::kUnused, {})));
    }
  }

  void FindPlaces() {
    const Meant meant(uses_, all_);
    for (const auto& use : uses_.All()) {
      meant.ForEach(use, [&](std::size_t row) {
        if (row != use.inside) audit_.rows[row].uses.push_back({use.module, use.line});
      });
    }
  }

  void Report(std::size_t row, RuleId rule, Level level, std::string message) {
    if (is_quiet_[row]) return;
    auto finding = FindingOf(row, rule, std::move(message));
    finding.level = level;
    audit_.rows[row].findings.push_back({std::move(finding), {}});
  }

  void ReportUnused() {
    const auto is_needed = uses_.Needed(all_);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const auto& row = audit_.rows[i];
      const auto name = ToUtf8(rows_[i].declaration->name);
      if (!is_needed[i]) {
        Report(i, RuleId::kUnused, Level::kNote,
               row.uses.empty() ? name + " is not used" : "only what is not used uses " + name);
      } else if (row.fate.does == Fate::Does::kGoes) {
        Report(i, RuleId::kUnused, Level::kNote, "only what goes uses " + name);
      }
    }
  }

  void ReportTwins(const Likeness& likeness) {
    std::map<std::pair<std::size_t, Sort>, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      // Branches of #If have several on purpose.
      if (rows_[i].declaration->condition == 0)
        groups[{uses_.NameOf(i), rows_[i].sort}].push_back(i);
    }
    for (const auto& [name, group] : groups)
      if (group.size() > 1) ReportGroup(group, likeness);
  }

  void ReportGroup(const std::vector<std::size_t>& group, const Likeness& likeness) {
    const auto first = FirstOf(group);
    const bool has_public =
        std::ranges::any_of(group, [this](std::size_t row) { return rows_[row].is_public; });
    for (const auto row : group) {
      // Two in one module do not compile, which is another matter.
      if (rows_[row].module == rows_[first].module) continue;
      const auto name = ToUtf8(rows_[row].declaration->name);
      if (likeness.meaning[row] == likeness.meaning[first]) {
        const auto* const more = has_public ? "" : "; it could be Public once";
        Report(row, RuleId::kDeclaredTwice, Level::kNote,
               name + " is declared alike in " + PlaceText(first) + more);
      } else {
        Report(row, RuleId::kDeclaredDifferently, has_public ? Level::kWarning : Level::kNote,
               name + " is declared differently in " + PlaceText(first));
      }
    }
  }

  // What the others of its name are compared with: that which stays for them, else a public one,
  // else the first.
  [[nodiscard]] std::size_t FirstOf(const std::vector<std::size_t>& group) const {
    for (const auto row : group)
      if (audit_.rows[row].fate.keeper != kNoRow) return audit_.rows[row].fate.keeper;
    const auto is_public = [this](std::size_t row) { return rows_[row].is_public; };
    const auto found = std::ranges::find_if(group, is_public);
    return found == group.end() ? group.front() : *found;
  }

  [[nodiscard]] std::string PlaceText(std::size_t row) const {
    return ModuleNameText(subject_, rows_[row].module) + ":" +
           std::to_string(rows_[row].declaration->name_place.line);
  }

  void ReportDifferences() {
    check::Subject checked;
    // Only declarations are asked for, not the code that uses them.
    checked.form = check::Subject::Form::kLibrary;
    checked.constants = subject_.constants;
    checked.may_have_other_types = true;
    for (const auto& module : subject_.modules)
      checked.modules.push_back({module.text, module.parsed});
    for (auto& finding : check::Check(checked, libraries_.AsReference(), {})) {
      if (!ComparesWithLibrary(finding.rule)) continue;
      const auto row = finder_.Find(finding.module, finding.place.offset);
      if (row == kNoRow) continue;
      finding.edits.clear();
      audit_.rows[row].findings.push_back({std::move(finding), LibraryFormOf(row)});
    }
  }

  // With the scope word of the row's own declaration.
  [[nodiscard]] std::u16string LibraryFormOf(std::size_t row) const {
    const auto& declaration = *rows_[row].declaration;
    const auto kind = KindOf(rows_[row].sort);
    if (!kind) return {};
    const auto item = libraries_.Find(*kind, declaration.name);
    if (!item) return {};
    std::u16string text;
    AppendItemText(*kind, item->name, item->item,
                   declaration.scope == vb::Scope::kPublic ? u"Public" : u"Private", text);
    return text;
  }

  void MakeEdits() {
    std::vector<std::vector<std::size_t>> rows_of(subject_.modules.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) rows_of[rows_[i].module].push_back(i);
    for (std::size_t module = 0; module < rows_of.size(); ++module) {
      const auto edits = EditsOf(module, rows_of[module]);
      audit_.edits.insert(audit_.edits.end(), edits.begin(), edits.end());
    }
  }

  [[nodiscard]] std::vector<LineEdit> EditsOf(std::size_t module,
                                              const std::vector<std::size_t>& rows) const {
    std::vector<RemovedLines> declared;
    std::vector<RemovedLines> removed;
    std::vector<LineEdit> edits;
    for (const auto row : rows) {
      const auto& declaration = *rows_[row].declaration;
      const auto does = audit_.rows[row].fate.does;
      const RemovedLines own{declaration.place.line, declaration.end_line};
      declared.push_back(own);
      if (does == Fate::Does::kGoes || does == Fate::Does::kGoesForAnother) removed.push_back(own);
      if (does == Fate::Does::kBecomesPublic)
        edits.push_back({module, own.first, 1, PublicLine(module, declaration)});
    }
    if (!removed.empty()) {
      const auto gone = EditsToRemove(module, lines_[module], removed, declared);
      edits.insert(edits.end(), gone.begin(), gone.end());
    }
    std::ranges::sort(edits, {}, &LineEdit::line);
    return edits;
  }

  // The declaration's first line with Public in front.
  [[nodiscard]] std::u16string PublicLine(std::size_t module,
                                          const vb::Declaration& declaration) const {
    constexpr std::u16string_view kPrivateWord = u"Private";
    const auto line = lines_[module].At(declaration.place.line);
    const auto indent = declaration.place.offset - lines_[module].Start(declaration.place.line);
    auto rest = line.substr(indent);
    const bool has_word = EqualIgnoringCase(rest.substr(0, kPrivateWord.size()), kPrivateWord);
    if (has_word) rest.remove_prefix(kPrivateWord.size());
    return std::u16string(line.substr(0, indent)) + (has_word ? u"Public" : u"Public ") +
           std::u16string(rest);
  }

  const Subject& subject_;
  check::KnownLibraries& libraries_;
  plan::ProjectModules modules_;
  std::vector<Row> rows_;
  RowFinder finder_;
  Uses uses_;
  std::vector<ModuleLines> lines_;
  Rest all_;
  std::vector<bool> is_quiet_;
  Audit audit_;
};

}  // namespace

std::size_t Audit::FindingCount() const {
  std::size_t count = 0;
  for (const auto& row : rows) count += row.findings.size();
  return count;
}

Audit AuditProject(const Subject& subject, check::KnownLibraries& libraries) {
  return Auditor(subject, libraries).Run();
}

std::string ModuleNameText(const Subject& subject, std::size_t module) {
  const auto& [name, text, parsed] = subject.modules[module];
  const auto own = name.empty() ? parsed->Name() : name;
  return own.empty() ? "module " + std::to_string(module + 1) : ToUtf8(own);
}

std::string ActionText(const Audit& audit, std::size_t row, const Subject& subject) {
  const auto& [what, uses, findings, fate] = audit.rows[row];
  switch (fate.does) {
    case Fate::Does::kGoes:
      return "remove it";
    case Fate::Does::kGoesForAnother:
      return "remove it: " + ModuleNameText(subject, audit.rows[fate.keeper].row.module) +
             " has it for all";
    case Fate::Does::kBecomesPublic:
      return "make it Public for all";
    case Fate::Does::kStays:
      break;
  }
  if (findings.empty()) return {};
  for (const auto obstacle : {fate.to_remove, fate.to_merge})
    if (obstacle != Obstacle::kNone) return "left: " + std::string(ObstacleText(obstacle));
  const bool has_form = std::ranges::any_of(
      findings, [](const RowFinding& found) { return !found.library_form.empty(); });
  return has_form ? "choose: the library has another form" : "";
}

}  // namespace declarium::audit
