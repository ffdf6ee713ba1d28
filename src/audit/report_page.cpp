#include "audit/report_page.h"

#include <algorithm>
#include <map>
#include <utility>

#include "audit/use_picture.h"
#include "text/text.h"

namespace declarium::audit {
namespace {

constexpr const char* kHead =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width\">\n<title>Declarations</title>\n"
    "<style>\n"
    ":root { color-scheme: light dark; --ink: #1c1c1e; --paper: #fff; --quiet: #666; --line: #ddd;"
    " --mark: #0a5cad; --warn: #a8480f; --box: #eef4fa }\n"
    "@media (prefers-color-scheme: dark) { :root { --ink: #e8e8ea; --paper: #17181a;"
    " --quiet: #a0a0a6; --line: #3a3b40; --mark: #78b4f0; --warn: #f0a070; --box: #222b35 } }\n"
    "body { font: 15px/1.45 system-ui, \"Segoe UI\", sans-serif; color: var(--ink);"
    " background: var(--paper); max-width: 72em; margin: 1.5em auto; padding: 0 1em }\n"
    "h1 { font-size: 1.5em } h2 { font-size: 1.2em; margin-top: 2em }\n"
    "table { border-collapse: collapse; width: 100%; font-size: .93em }\n"
    "th, td { text-align: left; vertical-align: top; padding: .25em .6em .25em 0;"
    " border-bottom: 1px solid var(--line); overflow-wrap: anywhere }\n"
    "th { color: var(--quiet); font-weight: 600 } td.place { white-space: nowrap }\n"
    "code { font-family: Consolas, \"DejaVu Sans Mono\", monospace }\n"
    ".warning, .error { color: var(--warn) } .quiet { color: var(--quiet) }\n"
    "pre { background: var(--box); padding: .4em; margin: .2em 0; overflow-x: auto }\n"
    "summary { cursor: pointer; padding: .2em 0 } svg { max-width: 100%; height: auto }\n"
    "svg text { fill: var(--ink); font: 13px system-ui, \"Segoe UI\", sans-serif }\n"
    "svg .count { fill: var(--quiet); font-size: 11px }\n"
    "svg rect { fill: var(--box); stroke: var(--mark) }\n"
    "svg path { fill: none; stroke: var(--mark); stroke-opacity: .45 }\n"
    "</style>\n</head>\n<body>\n<h1>Declarations</h1>\n";

std::string Plural(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

class Page {
 public:
  std::string Write(std::span<const ReportedProject> projects) {
    page_ = kHead;
    for (const auto& project : projects) AddProject(project);
    return std::move(page_ += "</body>\n</html>\n");
  }

 private:
  void AddProject(const ReportedProject& project) {
    project_ = &project;
    page_ += "<h2>" + HtmlText(project.name) + "</h2>\n";
    AddSummary();
    page_ += UsePicture(*project.subject, *project.audit);
    AddFindings();
    AddModules();
  }

  void AddSummary() {
    const auto& rows = project_->audit->rows;
    const auto count = [&](Fate::Does does) {
      return static_cast<std::size_t>(
          std::ranges::count(rows, does, [](const AuditedRow& row) { return row.fate.does; }));
    };
    const auto goes = count(Fate::Does::kGoes) + count(Fate::Does::kGoesForAnother);
    page_ += "<p>" + Plural(rows.size(), "declaration") + " in " +
             Plural(project_->subject->modules.size(), "module") + ", " +
             Plural(project_->audit->FindingCount(), "finding") + ". " + std::to_string(goes) +
             " can go and " + std::to_string(count(Fate::Does::kBecomesPublic)) +
             " can become Public for all; the rest is yours to decide.</p>\n";
  }

  void AddFindings() {
    if (project_->audit->FindingCount() == 0) return;
    page_ +=
        "<h2>What was found</h2>\n<table>\n<tr><th>where</th><th>what</th><th>finding</th>"
        "<th>to do</th></tr>\n";
    const auto& rows = project_->audit->rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto action = HtmlText(ActionText(*project_->audit, i, *project_->subject));
      for (const auto& found : rows[i].findings) AddFinding(rows[i], found, action);
    }
    page_ += "</table>\n";
  }

  void AddFinding(const AuditedRow& row, const RowFinding& found, const std::string& action) {
    const auto& finding = found.finding;
    const auto level = std::string(check::LevelText(finding.level));
    page_ += "<tr><td class=\"place\">" + PlaceOf(row.row) + "</td><td>" + NameOf(row.row) +
             "</td><td class=\"" + level + "\">" + level + " " +
             std::string(check::RuleOf(finding.rule).number) + ": " + HtmlText(finding.message);
    if (!found.library_form.empty())
      page_ += "<pre><code>" + HtmlText(ToUtf8(found.library_form)) + "</code></pre>";
    page_ += "</td><td>" + action + "</td></tr>\n";
  }

  // The declarations of each module, closed until somebody wants to see them.
  void AddModules() {
    page_ += "<h2>Every declaration</h2>\n";
    const auto& rows = project_->audit->rows;
    for (std::size_t i = 0; i < rows.size();) {
      const auto module = rows[i].row.module;
      auto end = i;
      while (end < rows.size() && rows[end].row.module == module) ++end;
      page_ += "<details><summary>" + HtmlText(ModuleNameText(*project_->subject, module)) +
               " <span class=\"quiet\">" + HtmlText(project_->sources[module]) + ", " +
               Plural(end - i, "declaration") +
               "</span></summary>\n<table>\n<tr><th>line</th><th>what</th><th>used in</th></tr>\n";
      for (; i < end; ++i) AddRow(rows[i]);
      page_ += "</table></details>\n";
    }
  }

  void AddRow(const AuditedRow& row) {
    page_ += "<tr><td>" + std::to_string(row.row.declaration->name_place.line) + "</td><td>" +
             NameOf(row.row) + "</td><td>";
    if (row.uses.empty()) page_ += "<span class=\"quiet\">nothing</span>";
    std::map<std::size_t, std::size_t> counts;
    for (const auto& use : row.uses) ++counts[use.module];
    for (const auto& [module, count] : counts) {
      if (module != counts.begin()->first) page_ += ", ";
      page_ += HtmlText(ModuleNameText(*project_->subject, module)) + " <span class=\"quiet\">" +
               std::to_string(count) + "</span>";
    }
    page_ += "</td></tr>\n";
  }

  [[nodiscard]] std::string PlaceOf(const Row& row) const {
    return HtmlText(ModuleNameText(*project_->subject, row.module)) + ":" +
           std::to_string(row.declaration->name_place.line);
  }

  [[nodiscard]] static std::string NameOf(const Row& row) {
    return "<span class=\"quiet\">" + std::string(row.is_public ? "Public " : "Private ") +
           std::string(SortText(row.sort)) + "</span> <code>" +
           HtmlText(ToUtf8(row.declaration->name)) + "</code>";
  }

  const ReportedProject* project_ = nullptr;
  std::string page_;
};

}  // namespace

std::string ReportPage(std::span<const ReportedProject> projects) {
  return Page().Write(projects);
}

}  // namespace declarium::audit
