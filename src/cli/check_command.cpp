#include "cli/check_command.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

#include "cli/baseline.h"
#include "cli/known_libraries.h"
#include "cli/library_files.h"
#include "cli/mending.h"
#include "cli/output.h"
#include "cli/sarif.h"
#include "cli/source_projects.h"
#include "cli/target_option.h"

#include "check/check.h"
#include "check/known_libraries.h"
#include "check/library_source.h"
#include "check/rule_document.h"
#include "library/file_io.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using check::Level;

struct CheckOptions {
  std::vector<std::string> sources;
  std::vector<std::string> against;
  vb::Audience target = vb::Audience::kVb6;
  std::string windows;
  std::string format;
  Level fail_on = Level::kWarning;
  std::string baseline;
  bool fix = false;
  bool rules = false;
};

bool IsLibraryName(const std::string& name) {
  constexpr std::u16string_view kExtension = u".api";
  const auto text = FromUtf8(name);
  return text.size() > kExtension.size() &&
         EqualIgnoringCase(text.substr(text.size() - kExtension.size()), kExtension);
}

std::optional<check::WindowsVersion> VersionOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const auto dot = text.find('.');
  return check::WindowsVersion{std::stoi(text.substr(0, dot)), std::stoi(text.substr(dot + 1))};
}

class Checker {
 public:
  Checker(const CheckOptions& options, const Session& session)
      : options_(options),
        session_(session),
        rule_options_{.audience = options.target, .windows = VersionOf(options.windows)} {
    LoadKnown(libraries_, options.against, session);
    if (!options.baseline.empty()) baseline_ = Baseline(options.baseline);
  }

  ExitStatus Run() {
    std::vector<std::string> modules;
    for (const auto& source : options_.sources) {
      if (IsLibraryName(source)) {
        CheckLibrary(source);
      } else {
        modules.push_back(source);
      }
    }
    if (!modules.empty()) {
      for (const auto& project : ReadSources(modules, session_)) CheckProject(project);
    }
    Print();
    if (!has_all_files_) return ExitStatus::kFileFailed;
    const bool fails = std::ranges::any_of(found_, [&](const SourceFinding& found) {
      return !found.is_mended && found.finding.level >= options_.fail_on;
    });
    return fails ? ExitStatus::kNothingFound : ExitStatus::kDone;
  }

 private:
  void CheckLibrary(const std::string& file) {
    if (options_.fix) {
      throw CommandFailed(ExitStatus::kWrongUse, file + ": --fix mends modules, not libraries");
    }
    const auto library = LoadLibrary(file);
    const check::LibrarySource source(library);
    for (auto& finding : check::Check(source.AsSubject(), libraries_.AsReference(), rule_options_))
      Add(file, source.Text(), std::move(finding));
  }

  void CheckProject(const SourceProject& project) {
    SayErrors(session_, project);
    has_all_files_ = has_all_files_ && project.has_all_files;
    if (project.modules.empty()) return;
    const bool is_whole = !project.name.empty() && project.has_all_files;
    check::Subject subject;
    subject.form = is_whole ? check::Subject::Form::kProject : check::Subject::Form::kModules;
    subject.constants = project.project.constants;
    subject.is_listed = !project.text.empty();
    subject.may_have_other_types = MayHaveOtherTypes(project);
    for (const auto& module : project.modules)
      subject.modules.push_back({module.text, &module.parsed});
    auto findings = check::Check(subject, libraries_.AsReference(), rule_options_);
    const auto mended = options_.fix ? Mend(project, findings) : std::set<std::size_t>();
    for (std::size_t i = 0; i < findings.size(); ++i) {
      const auto& module = project.modules[findings[i].module];
      Add(module.name, module.text, std::move(findings[i]));
      if (mended.contains(i) && !found_.empty()) found_.back().is_mended = true;
    }
  }

  // A folder does not say which type libraries its modules use. Every project uses stdole.
  static bool MayHaveOtherTypes(const SourceProject& project) {
    return project.text.empty() ||
           std::ranges::any_of(project.project.references, [](const vb::Reference& reference) {
             return !LowerCase(reference.path).contains(u"stdole");
           });
  }

  // Writes what mends the findings into the files. The positions of the findings that are gone.
  std::set<std::size_t> Mend(const SourceProject& project,
                             const std::vector<check::Finding>& findings) {
    std::map<std::size_t, std::vector<Edit>> edits;
    for (const auto& finding : findings)
      std::ranges::copy(finding.edits, std::back_inserter(edits[finding.module]));
    for (auto& [module, changes] : edits) {
      changes = WithoutOverlaps(std::move(changes));
      if (!changes.empty())
        MendFile(session_, project.modules[module].name, project.modules[module].text, changes);
    }
    std::set<std::size_t> mended;
    for (std::size_t i = 0; i < findings.size(); ++i) {
      const auto& own = findings[i].edits;
      const auto& made = edits[findings[i].module];
      const bool is_made = std::ranges::all_of(
          own, [&](const Edit& edit) { return std::ranges::find(made, edit) != made.end(); });
      if (!own.empty() && is_made) mended.insert(i);
    }
    return mended;
  }

  void Add(const std::string& source, std::u16string_view text, check::Finding finding) {
    auto mended = check::MendedLines(text, finding.edits);
    found_.push_back({source, std::move(mended), std::move(finding)});
  }

  void Print() {
    std::erase_if(found_, [&](const SourceFinding& found) { return baseline_.Take(found); });
    if (options_.format == "sarif") {
      session_.streams.out << SarifLog(found_, DECLARIUM_VERSION)
                                  .dump(1, ' ', false,
                                        nlohmann::ordered_json::error_handler_t::replace)
                           << '\n';
    } else if (options_.format == "json" || (options_.format.empty() && session_.IsJson())) {
      PrintAsJson();
    } else {
      for (const auto& found : found_) PrintAsText(found);
    }
  }

  void PrintAsJson() const {
    auto header = JsonHeader("check");
    header["findings"] = found_.size();
    PrintJson(session_, header);
    for (const auto& found : found_) {
      const auto& finding = found.finding;
      nlohmann::ordered_json object = {{"source", found.source},
                                       {"line", finding.place.line},
                                       {"column", finding.place.column},
                                       {"rule", check::RuleOf(finding.rule).number},
                                       {"level", check::LevelText(finding.level)},
                                       {"name", finding.name},
                                       {"message", finding.message}};
      if (!found.mended.empty()) object["mended"] = ToUtf8(found.mended);
      if (found.is_mended) object["done"] = true;
      PrintJson(session_, object);
    }
  }

  // As compilers say it.
  void PrintAsText(const SourceFinding& found) const {
    const auto& finding = found.finding;
    auto& out = session_.streams.out;
    out << OneLine(FromUtf8(found.source)) << ':' << finding.place.line << ':'
        << finding.place.column << ": " << check::LevelText(finding.level) << ' '
        << check::RuleOf(finding.rule).number << ": " << OneLine(FromUtf8(finding.message)) << '\n';
    if (found.mended.empty()) return;
    const auto lines = Lines(found.mended);
    out << (found.is_mended ? "    mended: " : "    better: ")
        << lines.substr(std::min(lines.find_first_not_of(" \t"), lines.size())) << '\n';
  }

  const CheckOptions& options_;
  const Session& session_;
  check::KnownLibraries libraries_;
  check::Options rule_options_;
  Baseline baseline_;
  std::vector<SourceFinding> found_;
  bool has_all_files_ = true;
};

ExitStatus RunCheck(const CheckOptions& options, const Session& session) {
  if (options.rules) {
    session.streams.out << check::RulesDocument();
    return ExitStatus::kDone;
  }
  if (options.sources.empty())
    throw CommandFailed(ExitStatus::kWrongUse, "check needs a SOURCE; --rules lists the rules");
  const bool reads_input = std::ranges::find(options.sources, "-") != options.sources.end();
  if (options.fix && reads_input)
    throw CommandFailed(ExitStatus::kWrongUse, "--fix cannot mend standard input");
  return Checker(options, session).Run();
}

void DefineChoices(CLI::App& command, CheckOptions& options) {
  DefineTarget(command, options.target,
               "For whom the declarations are: vb6, vba7, vba7-only or twinbasic; vb6 unless said "
               "otherwise");
  command
      .add_option("--windows", options.windows,
                  "The oldest Windows that must do: 5.1, 6.0, 6.1 or 10.0")
      ->transform(OneOf({"5.1", "6.0", "6.1", "10.0"}))
      ->type_name("VERSION");
  command.add_option("--format", options.format, "How findings are printed: text, json or sarif")
      ->transform(OneOf({"text", "json", "sarif"}))
      ->type_name("FORMAT");
  DefineFailOn(command, options.fail_on, "warning");
}

}  // namespace

void AddCheckCommand(const CommandSet& set) {
  AddCommand<CheckOptions>(
      set,
      {"check", "Find what is wrong with declarations",
       "declarium-cli check Project1.vbp --against Win32.api",
       "One line a finding: its place, level, rule and what is wrong; below it the mended line\n"
       "where one is certain. --rules tells what every rule finds and what happens at run time.\n"
       "A comment ' nocheck, or ' nocheck D203, behind a declaration or on the line above keeps\n"
       "findings quiet; --baseline does so for those that an earlier check --json printed. What\n"
       "DLLs, constants and records are rests on the libraries of --against.\n"
       "Exit status: 1 when there is a finding of the level of --fail-on or above.\n\n"},
      [](CLI::App& command, CheckOptions& options) {
        command
            .add_option("SOURCE", options.sources,
                        "Visual Basic source files, projects (.vbp, .vbg, .mak), folders of "
                        "modules or libraries (.api); - is standard input")
            ->type_name("");
        DefineAgainst(command, options.against);
        DefineChoices(command, options);
        command.add_option("--baseline", options.baseline, "Findings that are known already")
            ->type_name("FILE");
        command.add_flag("--fix", options.fix, "Write the mended lines into the modules");
        command.add_flag("--rules", options.rules, "Print the rules, as a page in Markdown");
      },
      RunCheck);
}

}  // namespace declarium::cli
