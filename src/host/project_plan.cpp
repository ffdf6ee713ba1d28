#include "host/project_plan.h"

#include <algorithm>
#include <map>
#include <utility>

#include "audit/edit_order.h"

namespace declarium {
namespace {

using audit::kNoRow;

// The row that stays for it and for others; kNoRow where it is about the row alone.
std::size_t KeeperOf(const std::vector<audit::Fate>& fates, std::size_t row) {
  if (fates[row].does == audit::Fate::Does::kBecomesPublic) return row;
  return fates[row].keeper;
}

using TextsByName = std::map<std::u16string_view, std::u16string_view>;

TextsByName TextsOf(const ReadProject& project) {
  TextsByName texts;
  for (const auto& code : project.codes) texts.emplace(code.name, code.text);
  return texts;
}

void AddChanged(const TextsByName& then, const TextsByName& now,
                std::vector<std::u16string>& names) {
  for (const auto& [name, text] : then) {
    const auto found = now.find(name);
    const bool is_same = found != now.end() && found->second == text;
    if (!is_same && std::ranges::find(names, name) == names.end()) names.emplace_back(name);
  }
}

}  // namespace

ProjectPlan::ProjectPlan(ReadProject project, std::unique_ptr<check::KnownLibraries> libraries)
    : project_(std::move(project)), libraries_(std::move(libraries)) {
  for (const auto& code : project_.codes) {
    parsed_.push_back(vb::ReadModule(code.text, code.kind));
    modules_.push_back({.name = code.name, .text = code.text, .parsed = &parsed_.back()});
  }
  subject_.modules = modules_;
  subject_.project_name = project_.name;
  subject_.is_whole = project_.unread.empty();
  audit_.emplace(subject_, *libraries_, audit::Differing::kIsReplaced);
  for (const auto& row : Rows()) offered_.push_back(row.fate);
  left_out_.resize(Rows().size());
  done_.resize(Rows().size());
}

void ProjectPlan::LeaveOut(std::size_t row) {
  left_out_[row] = true;
  PlanAgain();
}

void ProjectPlan::TakeIn(std::size_t row) {
  left_out_[row] = false;
  const auto keeper = KeeperOf(offered_, row);
  for (std::size_t i = 0; keeper != kNoRow && i < offered_.size(); ++i)
    if (KeeperOf(offered_, i) == keeper) left_out_[i] = false;
  PlanAgain();
}

void ProjectPlan::LeaveOutModule(std::size_t module) {
  for (std::size_t i = 0; i < left_out_.size(); ++i)
    if (Rows()[i].row.module == module) left_out_[i] = true;
  PlanAgain();
}

void ProjectPlan::Choose(std::vector<bool> left_out) {
  left_out_ = std::move(left_out);
  PlanAgain();
}

std::vector<std::size_t> ProjectPlan::ChangedModules() const {
  return audit::ModulesInOrder(Audit());
}

std::vector<LineEdit> ProjectPlan::EditsOf(std::size_t module) const {
  std::vector<LineEdit> edits;
  for (const auto& edit : Audit().edits) {
    if (edit.module != module) continue;
    edits.push_back({.line = static_cast<int>(edit.line),
                     .removed = static_cast<int>(edit.count),
                     .text = edit.text.value_or(std::u16string())});
  }
  return edits;
}

std::vector<std::u16string> ProjectPlan::Differences(const ReadProject& now) const {
  std::vector<std::u16string> names;
  const auto texts = TextsOf(project_);
  const auto texts_now = TextsOf(now);
  AddChanged(texts, texts_now, names);
  AddChanged(texts_now, texts, names);
  return names;
}

EditReport ProjectPlan::CarryOut(std::size_t module) {
  const auto& code = project_.codes[module];
  auto report = ApplyEdits(*code.module, code.text, EditsOf(module));
  if (report.outcome != EditReport::Outcome::kDone) return report;
  for (std::size_t i = 0; i < done_.size(); ++i)
    if (Rows()[i].row.module == module) done_[i] = Rows()[i].fate;
  return report;
}

}  // namespace declarium
