#include "cli/audit_command.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "cli/known_libraries.h"
#include "cli/library_files.h"
#include "cli/line_difference.h"
#include "cli/mending.h"
#include "cli/output.h"
#include "cli/sarif.h"
#include "cli/source_projects.h"

#include "audit/audit.h"
#include "audit/report_page.h"
#include "library/file_io.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using check::Level;
using nlohmann::ordered_json;

struct AuditOptions {
  std::vector<std::string> projects;
  std::vector<std::string> against;
  std::string format;
  std::string out;
  Level fail_on = Level::kNote;
  bool apply = false;
  bool replace = false;
  bool difference = false;
  bool force = false;
};

// A project with its audit. It stays where it is: its parts refer into each other.
struct AuditedProject {
  const SourceProject* source;
  std::vector<plan::ModuleText> modules;
  audit::Subject subject;
  audit::Audit audit;
};

bool IsDone(const audit::AuditedRow& row) {
  return row.fate.does != audit::Fate::Does::kStays;
}

class ProjectAuditor {
 public:
  ProjectAuditor(const AuditOptions& options, const Session& session)
      : options_(options), session_(session) {
    LoadKnown(libraries_, options.against, session);
  }

  ExitStatus Run() {
    sources_ = ReadSources(options_.projects, session_);
    FindSharedFiles();
    for (const auto& source : sources_) {
      SayErrors(session_, source);
      has_all_files_ = has_all_files_ && source.has_all_files;
      if (!source.modules.empty()) Audit(source);
    }
    if (options_.apply && has_all_files_) Apply();
    Print();
    if (!has_all_files_) return ExitStatus::kFileFailed;
    return Fails() ? ExitStatus::kNothingFound : ExitStatus::kDone;
  }

 private:
  static std::filesystem::path Place(const SourceModule& module) {
    std::error_code ignored;
    auto path = std::filesystem::weakly_canonical(PathOf(module.name), ignored);
    return path.empty() ? PathOf(module.name) : path;
  }

  void FindSharedFiles() {
    for (const auto& source : sources_)
      for (const auto& module : source.modules) ++projects_of_[Place(module)];
  }

  void Audit(const SourceProject& source) {
    auto& project = projects_.emplace_back();
    project.source = &source;
    for (const auto& module : source.modules) {
      const auto own = module.parsed.Name();
      const auto& file =
          file_names_.emplace_back(FromUtf8(PathText(PathOf(module.name).filename())));
      project.modules.push_back(
          {own.empty() ? std::u16string_view(file) : own, module.text, &module.parsed});
      project.subject.is_shared.push_back(projects_of_[Place(module)] > 1);
    }
    project.subject.modules = project.modules;
    project.subject.project_name = source.project.name;
    project.subject.constants = source.project.constants;
    project.subject.is_whole = !source.name.empty() && source.has_all_files;
    project.audit = audit::AuditProject(
        project.subject, libraries_,
        options_.replace ? audit::Differing::kIsReplaced : audit::Differing::kIsTold);
  }

  // The line edits of each module that has some.
  static std::map<std::size_t, std::vector<audit::LineEdit>> EditsByModule(
      const AuditedProject& project) {
    std::map<std::size_t, std::vector<audit::LineEdit>> edits;
    for (const auto& edit : project.audit.edits) edits[edit.module].push_back(edit);
    return edits;
  }

  // Everything is encoded before the first file is written. Modules whose declarations become
  // Public come first: should a file fail, nothing lacks what another was to have for it.
  void Apply() const {
    std::vector<std::pair<std::string, std::string>> files;
    for (const auto& project : projects_) {
      for (const auto& [module, edits] : EditsByModule(project)) {
        const auto& [name, text, parsed] = project.source->modules[module];
        const auto changes = audit::TextEdits(audit::ModuleLines(text), edits);
        const bool gives = std::ranges::any_of(
            edits, [](const audit::LineEdit& edit) { return edit.text.has_value(); });
        files.emplace(gives ? files.begin() : files.end(), name,
                      BytesWith(name, text, Edited(text, changes)));
      }
    }
    for (const auto& [file, bytes] : files) WriteBytes(session_, bytes, file);
  }

  template <class Use>
  void ForEachRow(const Use& use) const {
    for (const auto& project : projects_)
      for (std::size_t i = 0; i < project.audit.rows.size(); ++i) use(project, i);
  }

  [[nodiscard]] bool Fails() const {
    bool fails = false;
    ForEachRow([&](const AuditedProject& project, std::size_t i) {
      const auto& row = project.audit.rows[i];
      for (const auto& found : row.findings)
        fails =
            fails || (found.finding.level >= options_.fail_on && !(options_.apply && IsDone(row)));
    });
    return fails;
  }

  void Print() const {
    if (options_.difference) PrintDifferences();
    if (options_.format == "html") {
      PrintPage();
    } else if (options_.format == "sarif") {
      PrintSarif();
    } else if (options_.format == "json" || (options_.format.empty() && session_.IsJson())) {
      PrintAsJson();
    } else if (!options_.difference) {
      ForEachRow([this](const AuditedProject& project, std::size_t i) { PrintRow(project, i); });
    }
  }

  void PrintDifferences() const {
    for (const auto& project : projects_) {
      for (const auto& [module, edits] : EditsByModule(project)) {
        const auto& [name, text, parsed] = project.source->modules[module];
        std::vector<Replacement> replacements;
        for (auto& edit : audit::TextEdits(audit::ModuleLines(text), edits))
          replacements.push_back({edit.offset, edit.offset + edit.length, std::move(edit.text)});
        session_.streams.out << UnifiedDifference(name, text, replacements);
      }
    }
  }

  // A line a declaration, and one below it for each finding.
  void PrintRow(const AuditedProject& project, std::size_t i) const {
    const auto& [row, uses, findings, fate, lines, form] = project.audit.rows[i];
    auto& out = session_.streams.out;
    const auto& place = row.declaration->name_place;
    out << OneLine(FromUtf8(project.source->modules[row.module].name)) << ':' << place.line << ':'
        << place.column << '\t' << audit::SortText(row.sort) << '\t'
        << (row.is_public ? "Public" : "Private") << '\t' << OneLine(row.declaration->name) << '\t'
        << UsesText(project, uses) << '\n';
    for (const auto& found : findings)
      out << "    " << check::LevelText(found.finding.level) << ' '
          << check::RuleOf(found.finding.rule).number << ": "
          << OneLine(FromUtf8(found.finding.message)) << '\n';
    const auto action = ActionText(project.audit, i, project.subject);
    if (action.empty()) return;
    const bool is_done = options_.apply && has_all_files_ && IsDone(project.audit.rows[i]);
    out << "    " << (is_done ? "done: " : "") << OneLine(FromUtf8(action)) << '\n';
  }

  // "used 3: Main 2, Form1"
  static std::string UsesText(const AuditedProject& project,
                              const std::vector<audit::UsePlace>& uses) {
    if (uses.empty()) return "unused";
    std::map<std::size_t, std::size_t> counts;
    for (const auto& use : uses) ++counts[use.module];
    auto text = "used " + std::to_string(uses.size()) + ":";
    for (const auto& [module, count] : counts) {
      text += module == counts.begin()->first ? " " : ", ";
      text += OneLine(FromUtf8(audit::ModuleNameText(project.subject, module)));
      if (count > 1) text += " " + std::to_string(count);
    }
    return text;
  }

  [[nodiscard]] static ordered_json JsonRow(const AuditedProject& project,
                                            const audit::AuditedRow& audited) {
    const auto& row = audited.row;
    auto uses = ordered_json::array();
    for (const auto& use : audited.uses)
      uses.push_back({{"source", project.source->modules[use.module].name}, {"line", use.line}});
    return {{"source", project.source->modules[row.module].name},
            {"line", row.declaration->name_place.line},
            {"kind", audit::SortText(row.sort)},
            {"name", ToUtf8(row.declaration->name)},
            {"scope", row.is_public ? "Public" : "Private"},
            {"uses", std::move(uses)}};
  }

  void PrintAsJson() const {
    std::size_t findings = 0;
    auto declarations = ordered_json::array();
    ForEachRow([&](const AuditedProject& project, std::size_t i) {
      findings += project.audit.rows[i].findings.size();
      declarations.push_back(JsonRow(project, project.audit.rows[i]));
    });
    auto header = JsonHeader("audit");
    header["findings"] = findings;
    header["declarations"] = std::move(declarations);
    PrintJson(session_, header);
    ForEachRow([&](const AuditedProject& project, std::size_t i) {
      for (const auto& found : project.audit.rows[i].findings)
        PrintJson(session_, JsonFinding(project, i, found));
    });
  }

  [[nodiscard]] ordered_json JsonFinding(const AuditedProject& project, std::size_t i,
                                         const audit::RowFinding& found) const {
    const auto& finding = found.finding;
    const auto& row = project.audit.rows[i];
    ordered_json object = {{"source", project.source->modules[finding.module].name},
                           {"line", finding.place.line},
                           {"column", finding.place.column},
                           {"rule", check::RuleOf(finding.rule).number},
                           {"level", check::LevelText(finding.level)},
                           {"name", finding.name},
                           {"message", finding.message},
                           {"action", ActionText(project.audit, i, project.subject)},
                           {"certain", IsDone(row)}};
    if (!found.library_form.empty()) object["mended"] = ToUtf8(found.library_form);
    if (options_.apply && has_all_files_ && IsDone(row)) object["done"] = true;
    return object;
  }

  void PrintSarif() const {
    std::vector<SourceFinding> findings;
    ForEachRow([&](const AuditedProject& project, std::size_t i) {
      const auto& row = project.audit.rows[i];
      for (const auto& found : row.findings)
        findings.push_back({project.source->modules[found.finding.module].name, found.library_form,
                            found.finding, options_.apply && IsDone(row)});
    });
    session_.streams.out << SarifLog(findings, DECLARIUM_VERSION)
                                .dump(1, ' ', false, ordered_json::error_handler_t::replace)
                         << '\n';
  }

  void PrintPage() const {
    std::vector<audit::ReportedProject> reported;
    for (const auto& project : projects_) {
      auto& added = reported.emplace_back();
      added.name = project.source->name.empty() ? "Modules" : project.source->name;
      added.subject = &project.subject;
      added.audit = &project.audit;
      for (const auto& module : project.source->modules) added.sources.push_back(module.name);
    }
    const auto page = audit::ReportPage(reported);
    if (options_.out.empty()) {
      session_.streams.out << page;
      return;
    }
    CheckIsPage(options_.out);
    WriteBytes(session_, page, options_.out);
  }

  // A report takes the place of a report, and of nothing else.
  void CheckIsPage(const std::string& file) const {
    std::error_code ignored;
    if (options_.force || !std::filesystem::exists(PathOf(file), ignored)) return;
    const auto old = ReadWholeFile(PathOf(file));
    if (!old) throw FileFailed(old.error());
    if (!old->empty() && !old->starts_with("<!DOCTYPE html>"))
      throw CommandFailed(ExitStatus::kFileFailed, file + ": is no report; --force replaces it");
  }

  const AuditOptions& options_;
  const Session& session_;
  check::KnownLibraries libraries_;
  std::deque<SourceProject> sources_;
  std::map<std::filesystem::path, int> projects_of_;
  std::deque<std::u16string> file_names_;
  std::deque<AuditedProject> projects_;
  bool has_all_files_ = true;
};

ExitStatus RunAudit(const AuditOptions& options, const Session& session) {
  if (!options.out.empty() && options.format != "html")
    throw CommandFailed(ExitStatus::kWrongUse, "-o is for --format html");
  const bool reads_input = std::ranges::find(options.projects, "-") != options.projects.end();
  if (options.apply && reads_input)
    throw CommandFailed(ExitStatus::kWrongUse, "--apply cannot change standard input");
  return ProjectAuditor(options, session).Run();
}

void DefineOutput(CLI::App& command, AuditOptions& options) {
  command
      .add_option("--format", options.format,
                  "How the result is printed: text, json, sarif or html, a report with a picture")
      ->transform(OneOf({"text", "json", "sarif", "html"}))
      ->type_name("FORMAT");
  command.add_option("-o,--output", options.out, "Write the report of --format html to this file")
      ->type_name("FILE");
  DefineFailOn(command, options.fail_on, "note");
  command.add_flag("--apply", options.apply, "Do in the modules what is certain");
  command.add_flag("--replace", options.replace,
                   "With --apply or --diff, replace what differs from the libraries, too");
  command.add_flag("--diff", options.difference, "Print what --apply changes as a patch");
  DefineForce(command, options.force, "Replace a file by -o that is no report");
}

}  // namespace

void AddAuditCommand(const CommandSet& set) {
  AddCommand<AuditOptions>(
      set,
      {"audit", "Show every declaration of a project, who uses it, and what can go",
       "declarium-cli audit Project1.vbp --against Win32.api",
       "One line a declaration: its place, kind, scope, name, and the modules that use it; below\n"
       "it what was found and what is to be done. --apply removes what is not used, and of what\n"
       "several modules declare alike all but one, which becomes Public. What stands inside #If,\n"
       "shares its line, or would change what code means is left, with the reason. A comment\n"
       "' nocheck keeps a declaration as it is. What differs from the libraries of --against is\n"
       "told; with --replace the library's form takes its place where calls and uses fit it.\n"
       "Exit status: 1 when there is a finding of the level of --fail-on or above.\n\n"},
      [](CLI::App& command, AuditOptions& options) {
        command
            .add_option("PROJECT", options.projects,
                        "Projects (.vbp, .vbg, .mak), folders of modules, or modules")
            ->required()
            ->type_name("");
        DefineAgainst(command, options.against);
        DefineOutput(command, options);
      },
      RunAudit);
}

}  // namespace declarium::cli
