#include "cli/import_command.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

#include "cli/library_files.h"
#include "cli/output.h"
#include "cli/source_files.h"
#include "cli/status_line.h"

#include "import/merge.h"
#include "import/parser.h"
#include "import/reading.h"
#include "library/file_format.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using Counts = std::array<std::size_t, kKindCount>;

struct ImportOptions {
  std::string file;
  std::vector<std::string> sources;
  bool replace = false;
  bool force = false;
  Reading reading = Reading::kVisualBasic;
  std::optional<std::string> title;
};

// What a user should know about a source.
struct SourceReport {
  std::string source;
  std::vector<SkippedLine> skipped;
  std::vector<Difference> differences;
};

struct ImportReport {
  Counts before{};
  Counts found{};
  Counts after{};
  std::vector<SourceReport> sources;
};

void CheckStorable(const ParsedItems& parsed, const std::string& source) {
  if (parsed.all_storable) return;
  for (const auto kind : kKinds) {
    const auto& [names, items] = parsed[kind];
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (IsStorable(names[i]) && IsStorable(items[i])) continue;
      throw CommandFailed(ExitStatus::kFileFailed,
                          SourceName(source) + ": " + QualifiedName(kind, names[i]) +
                              " holds a control character that no library can keep");
    }
  }
}

Counts CountItems(const auto& lists) {
  Counts counts{};
  std::ranges::transform(lists, counts.begin(),
                         [](const auto& of_kind) { return of_kind.names.size(); });
  return counts;
}

Library OpenOrCreate(const ImportOptions& options) {
  const auto path = PathOf(options.file);
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored)) return LoadLibrary(options.file);
  if (!options.title) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        options.file + ": no such file; --create TITLE creates the library");
  }
  Library created;
  created.title = CheckedTitle(*options.title);
  created.path = path;
  return created;
}

SourceReading ReadSourceFile(const std::string& source, Reading reading, const Session& session) {
  const auto view = ViewSource(source, session);
  auto literal = ParseSourceFile(view.bytes);
  if (reading == Reading::kLiteral) return {std::move(literal), {}};
  return ReadAsVisualBasic(DecodeCodePage(view.bytes), literal);
}

void ImportSource(const std::string& source, const ImportOptions& options, Existing existing,
                  const Session& session, Library& library, ImportReport& report) {
  auto [parsed, differences] = ReadSourceFile(source, options.reading, session);
  CheckStorable(parsed, source);
  const auto found = CountItems(parsed.lists);
  std::ranges::transform(report.found, found, report.found.begin(), std::plus());
  MergeItems(library, parsed, existing);
  report.sources.push_back({SourceName(source), std::move(parsed.skipped), std::move(differences)});
}

nlohmann::ordered_json CountsObject(const Counts& counts) {
  nlohmann::ordered_json object;
  for (const auto kind : kKinds) {
    object[KindWord(kind)] = counts[static_cast<std::size_t>(KindCode(kind))];
  }
  return object;
}

void PrintReportAsJson(const ImportReport& report, const Session& session) {
  auto header = JsonHeader("import");
  header["before"] = CountsObject(report.before);
  header["found"] = CountsObject(report.found);
  header["after"] = CountsObject(report.after);
  PrintJson(session, header);
  for (const auto& [source, skipped, differences] : report.sources) {
    for (const auto& line : skipped) {
      PrintJson(session,
                {{"source", source}, {"line", line.number}, {"reason", ReasonText(line.reason)}});
    }
    for (const auto& each : differences) {
      nlohmann::ordered_json object = {
          {"source", source},    {"line", each.line},           {"column", each.column},
          {"reason", "differs"}, {"kind", KindWord(each.kind)}, {"name", ToUtf8(each.name)}};
      if (each.change != Change::kNone) object["note"] = ChangeText(each.change);
      PrintJson(session, object);
    }
  }
}

void PrintReportAsText(const ImportReport& report, const Session& session) {
  for (const auto& [source, skipped, differences] : report.sources) {
    for (const auto& line : skipped) {
      session.streams.err << source << ':' << line.number << ": skipped, "
                          << ReasonText(line.reason) << ": " << OneLine(line.text) << '\n';
    }
    for (const auto& each : differences) {
      session.streams.err << source << ':' << each.line << ':' << each.column
                          << ": differs, taken as Visual Basic reads it: "
                          << QualifiedName(each.kind, each.name);
      if (each.change != Change::kNone)
        session.streams.err << " (" << ChangeText(each.change) << ')';
      session.streams.err << '\n';
    }
  }
  for (const auto kind : kKinds) {
    const auto i = static_cast<std::size_t>(KindCode(kind));
    session.streams.out << KindWord(kind) << '\t' << report.before[i] << " before\t"
                        << report.found[i] << " found\t" << report.after[i] << " after\n";
  }
}

ExitStatus RunImport(const ImportOptions& options, const Session& session) {
  StatusLine progress(session.streams);
  auto library = OpenOrCreate(options);
  ImportReport report;
  report.before = CountItems(library.lists);
  auto existing = options.replace ? Existing::kReplace : Existing::kKeep;
  for (const auto& source : options.sources) {
    progress.Show("importing " + SourceName(source));
    ImportSource(source, options, existing, session, library, report);
    existing = Existing::kKeep;
  }
  report.after = CountItems(library.lists);
  progress.Show("saving " + options.file);
  SaveLibrary(session, library, ForceOf(options.force));
  progress.Clear();

  if (session.IsJson()) {
    PrintReportAsJson(report, session);
  } else {
    PrintReportAsText(report, session);
  }
  return ExitStatus::kDone;
}

}  // namespace

void AddImportCommand(const CommandSet& set) {
  AddCommand<ImportOptions>(
      set,
      {"import", "Merge the declarations of source files into a library",
       "declarium-cli import Win32.api --create Windows WinShell.bas TrayIcon.bas",
       "The library's items are kept, beside what every source adds; of two items with exactly "
       "the\n"
       "same name one survives. Declaration lines that cannot be read are skipped and "
       "reported.\n"
       "Declarations are taken as Visual Basic reads them; those that reading by lines and\n"
       "blanks (--reading literal) would store otherwise are reported.\n\n"},
      [](CLI::App& command, ImportOptions& options) {
        DefineFile(command, options.file);
        command
            .add_option("SOURCE", options.sources,
                        "Visual Basic source files, merged one after another; - is standard input")
            ->required()
            ->type_name("");
        command.add_flag("--replace", options.replace,
                         "Drop the library's items; all sources are kept beside each other");
        command
            .add_option("--create", options.title,
                        "Create the library with this title; one that exists keeps its own")
            ->type_name("TITLE");
        const std::map<std::string, Reading> readings = {{"vb", Reading::kVisualBasic},
                                                         {"literal", Reading::kLiteral}};
        command
            .add_option("--reading", options.reading, "How declarations are read; vb if left out")
            ->transform(CLI::CheckedTransformer(readings, CLI::ignore_case).description(""))
            ->type_name("vb|literal");
        DefineForce(command, options.force, kForceSave);
      },
      RunImport);
}

}  // namespace declarium::cli
