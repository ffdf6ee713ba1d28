#include "host/ui/project_rows.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "library/kind.h"
#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

using audit::AuditedRow;
using audit::Fate;
using audit::kNoRow;
using audit::Obstacle;
using RowDoes = audit::Fate::Does;

constexpr std::u16string_view kBetween = u" – ";
constexpr std::size_t kMostModules = 4;

static_assert(std::size(texts::kProjectReasons) ==
              static_cast<std::size_t>(Obstacle::kStandsForOthers) + 1);

std::u16string PlaceOf(const ProjectPlan& plan, std::size_t row) {
  const auto& [module, declaration, sort, is_public, elsewhere] = plan.Rows()[row].row;
  return std::u16string(plan.ModuleName(module))
      .append(texts::kPlanLine)
      .append(CountText(declaration->name_place.line));
}

// "používa: Main 2, Form1", with so many modules at most.
std::u16string UsesText(const ProjectPlan& plan, const AuditedRow& row, std::size_t most) {
  if (row.uses.empty()) return std::u16string(texts::kProjectUnused);
  std::map<std::size_t, std::size_t> counts;
  for (const auto& use : row.uses) ++counts[use.module];
  std::u16string text(texts::kProjectUsed);
  std::size_t shown = 0;
  for (const auto& [module, count] : counts) {
    if (shown == most) break;
    if (shown++ > 0) text += u", ";
    text += plan.ModuleName(module);
    if (count > 1) text.append(u" ").append(CountText(count));
  }
  if (counts.size() > shown)
    text.append(texts::kProjectMoreModules).append(CountText(counts.size() - shown));
  return text;
}

// What the findings say beyond that nothing uses it; empty for nothing.
std::u16string FindingsText(const ProjectPlan& plan, const AuditedRow& row) {
  std::u16string text;
  const auto add = [&text](std::u16string_view part) {
    if (!text.empty()) text += u"; ";
    text += part;
  };
  bool says_that_it_differs = false;
  for (const auto& found : row.findings) {
    const auto rule = found.finding.rule;
    if (rule == check::RuleId::kDeclaredTwice) {
      // What becomes of it says so.
      if (row.fate.does == RowDoes::kGoesForAnother) continue;
      add(texts::kProjectAlike);
      text += PlaceOf(plan, found.other);
      const bool is_public = row.row.is_public || plan.Rows()[found.other].row.is_public;
      if (!is_public) text += texts::kProjectOncePublic;
    } else if (rule == check::RuleId::kDeclaredDifferently) {
      add(texts::kProjectDifferently);
      text += PlaceOf(plan, found.other);
    } else if (rule != check::RuleId::kUnused) {
      says_that_it_differs = true;
      add(check::RuleOf(rule).window.title);
    }
  }
  if (!says_that_it_differs && !row.library_form.empty()) add(texts::kProjectLibraryDiffers);
  return text;
}

Obstacle ReasonOf(const AuditedRow& row) {
  for (const auto obstacle : {row.fate.to_remove, row.fate.to_replace, row.fate.to_merge})
    if (obstacle != Obstacle::kNone) return obstacle;
  return Obstacle::kNone;
}

std::u16string_view ReasonText(Obstacle obstacle) {
  return texts::kProjectReasons[static_cast<std::size_t>(obstacle)];
}

struct FateTexts {
  std::u16string_view goes;
  std::u16string_view goes_for_another;
  std::u16string_view becomes_public;
  std::u16string_view replaced;
};

constexpr FateTexts kPlanned = {texts::kProjectGoes, texts::kProjectGoesForAnother,
                                texts::kProjectBecomesPublic, texts::kProjectReplaced};
constexpr FateTexts kDone = {texts::kProjectGone, texts::kProjectGoneForAnother,
                             texts::kProjectMadePublic, texts::kProjectWasReplaced};

std::u16string FateText(const ProjectPlan& plan, const Fate& fate, const FateTexts& texts) {
  switch (fate.does) {
    case RowDoes::kStays:
      break;
    case RowDoes::kGoes:
      return std::u16string(texts.goes);
    case RowDoes::kGoesForAnother:
      return std::u16string(texts.goes_for_another)
          .append(plan.ModuleName(plan.Rows()[fate.keeper].row.module));
    case RowDoes::kBecomesPublic:
      return std::u16string(texts.becomes_public);
    case RowDoes::kReplaced:
      return std::u16string(texts.replaced);
  }
  return {};
}

// What becomes of the row, or became of it; empty for nothing.
std::u16string ActionText(const ProjectPlan& plan, std::size_t row) {
  if (plan.Done(row).does != RowDoes::kStays) return FateText(plan, plan.Done(row), kDone);
  const auto& audited = plan.Rows()[row];
  if (audited.fate.does != RowDoes::kStays) return FateText(plan, audited.fate, kPlanned);
  const auto reason = ReasonOf(audited);
  if (reason == Obstacle::kNone) return {};
  return std::u16string(texts::kProjectStays).append(ReasonText(reason));
}

std::u16string_view TextOf(const ProjectPlan& plan, std::size_t row) {
  return plan.Rows()[row].row.declaration->text;
}

// The row that the row is one of several with; kNoRow for none.
std::size_t OtherOf(const AuditedRow& row) {
  for (const auto& found : row.findings)
    if (found.other != kNoRow) return found.other;
  return kNoRow;
}

void ShowStaying(const ProjectPlan& plan, const AuditedRow& row, ProjectRowDetail& detail) {
  if (!row.library_form.empty()) {
    detail.after_caption = texts::kPlanSourceLibrary;
    detail.after = row.library_form;
  } else if (const auto other = OtherOf(row); other != kNoRow) {
    detail.after_caption = std::u16string(texts::kPlanSourceFound) + u" " + PlaceOf(plan, other);
    detail.after = TextOf(plan, other);
  }
}

void ShowAfter(const ProjectPlan& plan, const AuditedRow& row, ProjectRowDetail& detail) {
  switch (row.fate.does) {
    case RowDoes::kStays:
      return ShowStaying(plan, row, detail);
    case RowDoes::kGoes:
      detail.after_caption = texts::kProjectDetailGoes;
      return;
    case RowDoes::kGoesForAnother: {
      const auto& keeper = plan.Rows()[row.fate.keeper];
      detail.after_caption =
          std::u16string(texts::kProjectDetailOther) + u" " + PlaceOf(plan, row.fate.keeper);
      detail.after = keeper.lines.empty() ? TextOf(plan, row.fate.keeper) : keeper.lines;
      return;
    }
    case RowDoes::kBecomesPublic:
    case RowDoes::kReplaced:
      detail.after_caption = texts::kProjectDetailChanges;
      detail.after = row.lines;
  }
}

}  // namespace

std::u16string ProjectRow(const ProjectPlan& plan, std::size_t row) {
  const auto& audited = plan.Rows()[row];
  std::u16string text(audited.row.declaration->name);
  text.append(kBetween).append(PlaceOf(plan, row));
  for (const auto& part :
       {ActionText(plan, row), UsesText(plan, audited, kMostModules), FindingsText(plan, audited)})
    if (!part.empty()) text.append(kBetween).append(part);
  return text;
}

int ProjectRowIcon(const ProjectPlan& plan, std::size_t row) {
  switch (plan.Rows()[row].row.sort) {
    case audit::Sort::kConst:
      return IconOf(Kind::kConst);
    case audit::Sort::kDeclare:
      return IconOf(Kind::kDeclare);
    case audit::Sort::kType:
      return IconOf(Kind::kType);
    case audit::Sort::kEnum:
      break;
  }
  return 0;
}

CheckMark ProjectRowMark(const ProjectPlan& plan, std::size_t row) {
  const bool is_done = plan.Done(row).does != RowDoes::kStays;
  if (is_done || !plan.IsOffered(row)) return CheckMark::kNone;
  return plan.Rows()[row].fate.does == RowDoes::kStays ? CheckMark::kClear : CheckMark::kChecked;
}

bool IsProjectFinding(const ProjectPlan& plan, std::size_t row) {
  const auto& audited = plan.Rows()[row];
  return plan.IsOffered(row) || !audited.findings.empty() || !audited.library_form.empty();
}

ProjectRowDetail DetailOf(const ProjectPlan& plan, std::size_t row) {
  ProjectRowDetail detail;
  const auto& audited = plan.Rows()[row];
  const auto findings = FindingsText(plan, audited);
  detail.about = UsesText(plan, audited, audited.uses.size());
  if (!findings.empty()) detail.about.append(kBetween).append(findings);
  detail.before_caption = std::u16string(texts::kPlanSourceFound) + u" " + PlaceOf(plan, row);
  detail.before = TextOf(plan, row);
  ShowAfter(plan, audited, detail);
  return detail;
}

}  // namespace declarium
