#include "audit/report_page.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

#include "audit/use_picture.h"
#include "check/rule.h"
#include "text/text.h"

namespace declarium::audit {
namespace {

constexpr const char* kHead =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width\">\n";

constexpr const char* kStyle =
    "<style>\n"
    ":root { color-scheme: light dark; --ink: #1c1c1e; --paper: #fff; --quiet: #666; --line: #ddd;"
    " --mark: #0a5cad; --warn: #a8480f; --box: #eef4fa }\n"
    "@media (prefers-color-scheme: dark) { :root { --ink: #e8e8ea; --paper: #17181a;"
    " --quiet: #a0a0a6; --line: #3a3b40; --mark: #78b4f0; --warn: #f0a070; --box: #222b35 } }\n"
    "body { font: 15px/1.45 system-ui, \"Segoe UI\", sans-serif; color: var(--ink);"
    " background: var(--paper); max-width: 72em; margin: 1.5em auto; padding: 0 1em }\n"
    "h1 { font-size: 1.5em } h2 { font-size: 1.25em; margin-top: 2em; overflow-wrap: anywhere }\n"
    "h3 { font-size: 1.1em; margin-top: 1.8em }\n"
    // Columns of given widths: one long name does not squeeze the others.
    "table { border-collapse: collapse; width: 100%; table-layout: fixed; font-size: .93em }\n"
    "th, td { text-align: left; vertical-align: top; padding: .25em .6em .25em 0;"
    " border-bottom: 1px solid var(--line); overflow-wrap: anywhere }\n"
    "th { color: var(--quiet); font-weight: 600 }\n"
    ".findings th:nth-child(1) { width: 13% } .findings th:nth-child(2) { width: 24% }\n"
    ".findings th:nth-child(4) { width: 19% }\n"
    ".declarations th:nth-child(1) { width: 6% } .declarations th:nth-child(2) { width: 44% }\n"
    ".counts { width: auto; table-layout: auto } .counts td { border: 0; padding-bottom: 0 }\n"
    ".counts td:first-child { text-align: right; font-variant-numeric: tabular-nums }\n"
    "code { font-family: Consolas, \"DejaVu Sans Mono\", monospace }\n"
    ".warning, .error { color: var(--warn) } .quiet { color: var(--quiet) }\n"
    "pre { background: var(--box); padding: .4em; margin: .2em 0; white-space: pre-wrap }\n"
    "summary { cursor: pointer; padding: .2em 0 } details { margin-top: .3em }\n"
    "svg { width: 100%; height: auto }\n"
    "svg text { fill: var(--ink); font: 13px system-ui, \"Segoe UI\", sans-serif }\n"
    "svg .count { fill: var(--quiet); font-size: 11px }\n"
    "svg rect { fill: var(--box); stroke: var(--mark) }\n"
    "svg path { fill: none; stroke: var(--mark); stroke-opacity: .45 }\n"
    // On paper nothing can be opened, and no row breaks.
    "@page { margin: 15mm }\n"
    "@media print { body { font-size: 10pt; max-width: none; margin: 0; padding: 0 }"
    " h2, h3, summary { break-after: avoid } tr, svg { break-inside: avoid }"
    " summary { list-style: none; font-weight: 600 }"
    " details::details-content { content-visibility: visible; block-size: auto } }\n"
    "</style>\n";

std::string Plural(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

class Page {
 public:
  std::string Write(std::span<const ReportedProject> projects) {
    const auto title = projects.size() == 1 ? ": " + HtmlText(projects[0].name) : std::string();
    page_ = kHead + ("<title>Declarations" + title + "</title>\n") + kStyle +
            "</head>\n<body>\n<h1>Declarations</h1>\n";
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
             " can become Public for all; " + Replaced(count(Fate::Does::kReplaced)) +
             "the rest is yours to decide.</p>\n";
    AddCounts();
  }

  static std::string Replaced(std::size_t count) {
    if (count == 0) return {};
    return std::to_string(count) + " can become what the library has; ";
  }

  // How many findings there are of each rule.
  void AddCounts() {
    std::map<check::RuleId, std::size_t> counts;
    for (const auto& row : project_->audit->rows)
      for (const auto& found : row.findings) ++counts[found.finding.rule];
    if (counts.empty()) return;
    page_ += "<table class=\"counts\">\n";
    for (const auto& [id, count] : counts) {
      const auto& rule = check::RuleOf(id);
      page_ += "<tr><td>" + std::to_string(count) + "</td><td>" + std::string(rule.number) +
               "</td><td>" + HtmlText(rule.title) + "</td></tr>\n";
    }
    page_ += "</table>\n";
  }

  void AddFindings() {
    if (project_->audit->FindingCount() == 0) return;
    page_ +=
        "<h3>What was found</h3>\n<table class=\"findings\">\n"
        "<thead><tr><th>where</th><th>what</th><th>finding</th><th>to do</th></tr></thead>\n";
    const auto& rows = project_->audit->rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].findings.empty()) continue;
      page_ += "<tr><td>" + PlaceOf(rows[i].row) + "</td><td>" + NameOf(rows[i].row) + "</td><td>";
      for (const auto& found : rows[i].findings) AddFinding(found);
      page_ += "</td><td>" + HtmlText(ActionText(*project_->audit, i, *project_->subject)) +
               "</td></tr>\n";
    }
    page_ += "</table>\n";
  }

  void AddFinding(const RowFinding& found) {
    const auto& finding = found.finding;
    const auto level = std::string(check::LevelText(finding.level));
    page_ += "<div class=\"" + level + "\">" + level + " " +
             std::string(check::RuleOf(finding.rule).number) + ": " + HtmlText(finding.message) +
             "</div>";
    if (!found.library_form.empty())
      page_ += "<pre><code>" + HtmlText(ToUtf8(found.library_form)) + "</code></pre>";
  }

  // The declarations of each module, closed until somebody wants to see them.
  void AddModules() {
    page_ += "<h3>Every declaration</h3>\n";
    const auto& rows = project_->audit->rows;
    for (std::size_t i = 0; i < rows.size();) {
      const auto module = rows[i].row.module;
      auto end = i;
      while (end < rows.size() && rows[end].row.module == module) ++end;
      page_ += "<details><summary>" + HtmlText(ModuleNameText(*project_->subject, module)) +
               " <span class=\"quiet\">" + HtmlText(project_->sources[module]) + ", " +
               Plural(end - i, "declaration") +
               "</span></summary>\n<table class=\"declarations\">\n"
               "<thead><tr><th>line</th><th>what</th><th>used in</th></tr></thead>\n";
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
      page_ += HtmlText(ModuleNameText(*project_->subject, module)) +
               "&#160;<span class=\"quiet\">" + std::to_string(count) + "</span>";
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
