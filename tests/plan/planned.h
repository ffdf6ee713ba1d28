// Plans over a few texts, for tests.
#pragma once

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "import/parser.h"
#include "plan/insertion_plan.h"
#include "text/text.h"

namespace declarium::plan {

// The declarations of the source as a library.
inline Library LibraryOf(std::string_view source) {
  const auto parsed = ParseSourceFile(source);
  Library library;
  for (const auto kind : kKinds) {
    std::vector<std::pair<std::u16string, std::u16string>> rows;
    for (std::size_t i = 0; i < parsed[kind].names.size(); ++i)
      rows.emplace_back(parsed[kind].names.At(i), parsed[kind].items.At(i));
    std::ranges::sort(rows, {}, [](const auto& row) { return LowerCase(row.first); });
    KindLists lists;
    for (const auto& [name, item] : rows) {
      lists.names.Add(name);
      lists.items.Add(item);
    }
    library.SetItems(kind, std::move(lists));
  }
  return library;
}

// The item of this name in the first kind that has it.
inline ItemView ItemOf(const Library& library, std::u16string_view name) {
  for (const auto kind : kKinds)
    if (const auto found = FindItem(library, kind, name)) return *found;
  return {};
}

// The lines of `text`, which LF ends, with those of the insertions.
inline std::u16string WithInsertions(std::u16string_view text,
                                     const std::vector<LineInsertion>& insertions) {
  std::vector<std::u16string> lines;
  for (const auto line : Split(text, u'\n')) lines.emplace_back(line);
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  for (auto each = insertions.rbegin(); each != insertions.rend(); ++each) {
    std::vector<std::u16string> added;
    for (const auto line : Split(each->text, kCrLf)) added.emplace_back(line);
    lines.insert(lines.begin() + (each->line - 1), added.begin(), added.end());
  }
  std::u16string changed;
  for (const auto& line : lines) changed += line + u"\n";
  return changed;
}

// A project whose first module takes what is inserted.
class PlannedProject {
 public:
  explicit PlannedProject(Library library) : library_(std::move(library)) {}

  PlannedProject& Add(std::u16string name, std::u16string text,
                      vb::ModuleKind kind = vb::ModuleKind::kStandard) {
    auto& kept = texts_.emplace_back(std::move(name), std::move(text));
    parsed_.push_back(vb::ReadModule(kept.second, kind));
    modules_.push_back({kept.first, kept.second, &parsed_.back()});
    return *this;
  }

  InsertionPlan& Plan(std::initializer_list<std::u16string_view> names,
                      const PlanOptions& options = {}) {
    std::vector<ItemView> asked;
    for (const auto name : names) asked.push_back(ItemOf(library_, name));
    const Library* const libraries[] = {&library_};
    wanted_ = WithNeeds(asked, libraries);
    project_ = std::make_unique<ProjectModules>(modules_, u"Project1", constants_);
    plan_ = std::make_unique<InsertionPlan>(*project_, 0, wanted_.items, options);
    return *plan_;
  }

  // The first module as the plan makes it.
  [[nodiscard]] std::u16string Changed() const {
    return WithInsertions(modules_.front().text, plan_->Insertions());
  }

  void DefineConstants(std::vector<vb::CompilerConstant> constants) {
    constants_ = std::move(constants);
  }
  [[nodiscard]] const WantedItems& Wanted() const { return wanted_; }

 private:
  Library library_;
  std::deque<std::pair<std::u16string, std::u16string>> texts_;
  std::deque<vb::Module> parsed_;
  std::vector<ModuleText> modules_;
  std::vector<vb::CompilerConstant> constants_;
  WantedItems wanted_;
  std::unique_ptr<ProjectModules> project_;
  std::unique_ptr<InsertionPlan> plan_;
};

// "insert A, present B (M:3)": one for each entry.
inline std::string Told(const InsertionPlan& plan) {
  std::string told;
  for (const auto& entry : plan.Entries()) {
    if (!told.empty()) told += ", ";
    told += std::string(DoesText(entry.does)) + " " + ToUtf8(entry.name);
    if (entry.found)
      told += " (" + ToUtf8(entry.found->name) + ":" + std::to_string(entry.found->line) + ")";
  }
  return told;
}

}  // namespace declarium::plan
