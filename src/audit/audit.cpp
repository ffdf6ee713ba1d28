#include "audit/audit.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "audit/fate_edits.h"
#include "audit/library_form.h"
#include "audit/replacing.h"
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

// Whether the DLL has no procedure as the declaration writes it, so that every call fails.
bool SaysThatItCallsNothing(const RowFinding& found) {
  const auto rule = found.finding.rule;
  return rule == RuleId::kSuffixMissing || rule == RuleId::kLettersDiffer ||
         rule == RuleId::kWrongLibrary;
}

}  // namespace

class Auditor {
 public:
  Auditor(const Subject& subject, check::KnownLibraries& libraries, Differing differing)
      : subject_(subject),
        libraries_(libraries),
        differing_(differing),
        modules_(subject.modules, subject.project_name, subject.constants),
        rows_(TableOf(subject)),
        finder_(subject, rows_),
        uses_(subject, modules_, rows_, finder_),
        lines_(LinesOf(subject)),
        certainty_(subject, rows_, uses_, finder_, lines_),
        replacing_(subject, modules_, rows_, certainty_, libraries) {
    all_.is_there.assign(rows_.size(), true);
    for (const auto& row : rows_) all_.is_public.push_back(row.is_public);
    for (const auto& row : rows_) audit_.rows.push_back({row, {}, {}, {}});
  }

  void Run() {
    FindQuiet();
    FindPlaces();
    likeness_ = LikenessOf(modules_, rows_, uses_, all_);
    PlanFates();
    ReportUnused();
    ReportTwins();
    if (!libraries_.AsReference().IsEmpty()) ReportDifferences();
    PlanReplacing();
    MakeEdits();
  }

  void LeaveOut(const std::vector<bool>& rows) {
    for (std::size_t i = 0; i < rows_.size(); ++i)
      if (kept_[i] != Obstacle::kQuiet) kept_[i] = rows[i] ? Obstacle::kLeftOut : Obstacle::kNone;
    PlanFates();
    PlanReplacing();
    MakeEdits();
  }

  [[nodiscard]] Audit& Result() { return audit_; }

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
      const bool is_quiet = suppressions->Cover(FindingOf(i, RuleId::kUnused, {}));
      kept_.push_back(is_quiet ? Obstacle::kQuiet : Obstacle::kNone);
    }
  }

  void PlanFates() {
    auto fates = PlanCleanUp(rows_, uses_, certainty_, likeness_, all_, kept_);
    for (std::size_t i = 0; i < rows_.size(); ++i) audit_.rows[i].fate = fates[i];
  }

  void FindPlaces() {
    const Meant meant(uses_, all_);
    for (const auto& use : uses_.All()) {
      meant.ForEach(use, [&](std::size_t row) {
        if (row != use.inside) audit_.rows[row].uses.push_back({use.module, use.line});
      });
    }
  }

  void Report(std::size_t row, RuleId rule, Level level, std::string message,
              std::size_t other = kNoRow) {
    if (kept_[row] == Obstacle::kQuiet) return;
    auto finding = FindingOf(row, rule, std::move(message));
    finding.level = level;
    audit_.rows[row].findings.push_back({std::move(finding), {}, other});
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

  void ReportTwins() {
    std::map<std::pair<std::size_t, Sort>, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      // Branches of #If have several on purpose.
      if (rows_[i].declaration->condition == 0)
        groups[{uses_.NameOf(i), rows_[i].sort}].push_back(i);
    }
    for (const auto& [name, group] : groups)
      if (group.size() > 1) ReportGroup(group);
  }

  void ReportGroup(const std::vector<std::size_t>& group) {
    const auto first = FirstOf(group);
    const bool has_public =
        std::ranges::any_of(group, [this](std::size_t row) { return rows_[row].is_public; });
    for (const auto row : group) {
      // Two in one module do not compile, which is another matter.
      if (rows_[row].module == rows_[first].module) continue;
      const auto name = ToUtf8(rows_[row].declaration->name);
      if (likeness_.meaning[row] == likeness_.meaning[first]) {
        const auto* const more = has_public ? "" : "; it could be Public once";
        Report(row, RuleId::kDeclaredTwice, Level::kNote,
               name + " is declared alike in " + PlaceText(first) + more, first);
      } else {
        Report(row, RuleId::kDeclaredDifferently, has_public ? Level::kWarning : Level::kNote,
               name + " is declared differently in " + PlaceText(first), first);
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

  void PlanReplacing() {
    if (differing_ == Differing::kIsTold) return;
    std::vector<bool> stands_for_others(rows_.size());
    for (const auto& row : audit_.rows)
      if (row.fate.keeper != kNoRow) stands_for_others[row.fate.keeper] = true;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      auto& [row, uses, findings, fate, lines, library_form] = audit_.rows[i];
      const auto* const form = FormOf(i);
      if (form == nullptr || fate.does != Fate::Does::kStays) continue;
      // No news of what nothing is wrong with.
      if (form->obstacle == Obstacle::kSaysTheSame && findings.empty()) continue;
      if (form->obstacle != Obstacle::kSaysTheSame) library_form = form->text;
      fate.to_replace = kept_[i] == Obstacle::kNone ? form->obstacle : kept_[i];
      if (stands_for_others[i]) fate.to_replace = Obstacle::kStandsForOthers;
      if (fate.to_replace == Obstacle::kNone) fate.does = Fate::Does::kReplaced;
    }
  }

  struct Form {
    Obstacle obstacle;  // to take the row's place
    std::u16string text;
  };

  // What a library has of the row's name; null for nothing. Remembers what it finds: a plan that is
  // made again changes nothing about it.
  [[nodiscard]] const Form* FormOf(std::size_t row) {
    const auto [known, is_new] = forms_.try_emplace(row);
    auto& found = known->second;
    if (is_new) found = FindForm(row);
    return found ? &*found : nullptr;
  }

  [[nodiscard]] std::optional<Form> FindForm(std::size_t row) {
    const auto& declaration = *rows_[row].declaration;
    const auto kind = KindOf(rows_[row].sort);
    const auto item = kind ? libraries_.Find(*kind, declaration.name) : std::nullopt;
    if (!item) return std::nullopt;
    const LibraryForm form(declaration, *item);
    const bool calls_nothing =
        std::ranges::any_of(audit_.rows[row].findings, SaysThatItCallsNothing);
    return Form{replacing_.ToReplace(row, form, calls_nothing), std::u16string(form.Text())};
  }

  void MakeEdits() {
    audit_.edits.clear();
    std::vector<std::vector<FatedDeclaration>> of_modules(subject_.modules.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      auto& row = audit_.rows[i];
      row.lines = LinesFor(i);
      of_modules[rows_[i].module].push_back({rows_[i].declaration, row.fate.does, row.lines});
    }
    for (std::size_t module = 0; module < of_modules.size(); ++module) {
      const auto edits = EditsOf(module, lines_[module], of_modules[module]);
      audit_.edits.insert(audit_.edits.end(), edits.begin(), edits.end());
    }
  }

  [[nodiscard]] std::u16string LinesFor(std::size_t row) const {
    const auto& [module, declaration, sort, is_public, elsewhere] = rows_[row];
    switch (audit_.rows[row].fate.does) {
      case Fate::Does::kBecomesPublic:
        return PublicLines(*declaration, lines_[module]);
      case Fate::Does::kReplaced:
        return LinesWith(forms_.at(row)->text, *declaration, subject_.modules[module].text,
                         lines_[module]);
      case Fate::Does::kStays:
      case Fate::Does::kGoes:
      case Fate::Does::kGoesForAnother:
        break;
    }
    return {};
  }

  const Subject& subject_;
  check::KnownLibraries& libraries_;
  Differing differing_;
  plan::ProjectModules modules_;
  std::vector<Row> rows_;
  RowFinder finder_;
  Uses uses_;
  std::vector<ModuleLines> lines_;
  Certainty certainty_;
  Replacing replacing_;
  Likeness likeness_;
  Rest all_;
  std::vector<Obstacle> kept_;                        // by row, why it must stay as it is
  std::map<std::size_t, std::optional<Form>> forms_;  // by row, as far as asked for
  Audit audit_;
};

std::size_t Audit::FindingCount() const {
  std::size_t count = 0;
  for (const auto& row : rows) count += row.findings.size();
  return count;
}

ProjectAudit::ProjectAudit(const Subject& subject, check::KnownLibraries& libraries,
                           Differing differing)
    : auditor_(std::make_unique<Auditor>(subject, libraries, differing)) {
  auditor_->Run();
}

ProjectAudit::~ProjectAudit() = default;

const Audit& ProjectAudit::Result() const {
  return auditor_->Result();
}

void ProjectAudit::LeaveOut(const std::vector<bool>& rows) {
  auditor_->LeaveOut(rows);
}

Audit AuditProject(const Subject& subject, check::KnownLibraries& libraries, Differing differing) {
  Auditor auditor(subject, libraries, differing);
  auditor.Run();
  return std::move(auditor.Result());
}

std::string ModuleNameText(const Subject& subject, std::size_t module) {
  const auto& [name, text, parsed] = subject.modules[module];
  const auto own = name.empty() ? parsed->Name() : name;
  return own.empty() ? "module " + std::to_string(module + 1) : ToUtf8(own);
}

std::string ActionText(const Audit& audit, std::size_t row, const Subject& subject) {
  const auto& [what, uses, findings, fate, lines, form] = audit.rows[row];
  switch (fate.does) {
    case Fate::Does::kGoes:
      return "remove it";
    case Fate::Does::kGoesForAnother:
      return "remove it: " + ModuleNameText(subject, audit.rows[fate.keeper].row.module) +
             " has it for all";
    case Fate::Does::kBecomesPublic:
      return "make it Public for all";
    case Fate::Does::kReplaced:
      return "replace it by the library's form";
    case Fate::Does::kStays:
      break;
  }
  if (findings.empty() && fate.to_replace == Obstacle::kNone) return {};
  for (const auto obstacle : {fate.to_remove, fate.to_replace, fate.to_merge})
    if (obstacle != Obstacle::kNone) return "left: " + std::string(ObstacleText(obstacle));
  const bool has_form = std::ranges::any_of(
      findings, [](const RowFinding& found) { return !found.library_form.empty(); });
  return has_form ? "choose: the library has another form" : "";
}

}  // namespace declarium::audit
