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
#include "text/encoding.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using Counts = std::array<std::size_t, kKindCount>;

struct ImportOptions {
  std::string file;
  std::vector<std::string> sources;
  bool replace = false;
  bool force = false;
  std::string encoding;
  Reading reading = Reading::kVisualBasic;
  std::optional<std::string> title;
};

// What a user should know about a source.
struct SourceReport {
  std::string source;
  Encoding encoding;
  std::vector<SkippedLine> skipped;
  std::vector<LostCharacter> replaced;
  std::vector<Difference> differences;
};

struct ImportReport {
  Counts before{};
  Counts found{};
  Counts after{};
  std::vector<SourceReport> sources;
};

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
  created.SetTitle(CheckedTitle(*options.title));
  created.path = path;
  return created;
}

SourceReading ReadSourceFile(std::string_view bytes, const Encoding& encoding, Reading reading) {
  auto literal = ParseSourceFile(bytes, encoding);
  if (reading == Reading::kLiteral) return {std::move(literal), {}};
  return ReadAsVisualBasic(DecodeText(bytes, encoding), literal);
}

void ImportSource(const std::string& source, const ImportOptions& options, Existing existing,
                  const Session& session, Library& library, ImportReport& report) {
  const auto view = ViewSource(source, session);
  const auto encoding = RecognizeEncoding(view.bytes, EncodingOf(options.encoding));
  auto [parsed, differences] = ReadSourceFile(view.bytes, encoding, options.reading);
  const auto found = CountItems(parsed.lists);
  std::ranges::transform(report.found, found, report.found.begin(), std::plus());
  MergeItems(library, parsed, existing);
  report.sources.push_back({SourceName(source), encoding, std::move(parsed.skipped),
                            std::move(parsed.replaced), std::move(differences)});
}

nlohmann::ordered_json CountsObject(const Counts& counts) {
  nlohmann::ordered_json object;
  for (const auto kind : kKinds) {
    object[KindWord(kind)] = counts[static_cast<std::size_t>(KindCode(kind))];
  }
  return object;
}

constexpr const char* kReplacedReason =
    "a character of a comment that the library's code page does not have became \"?\"";

void AddCharacter(const LostCharacter& character, nlohmann::ordered_json& object) {
  object["character"] = ToUtf8(character.text);
  object["character_line"] = character.line;
  object["character_column"] = character.column;
}

void PrintSourceAsJson(const SourceReport& report, const Session& session) {
  for (const auto& [number, text, reason, character] : report.skipped) {
    nlohmann::ordered_json object = {
        {"source", report.source}, {"line", number}, {"reason", ReasonText(reason)}};
    if (character) AddCharacter(*character, object);
    PrintJson(session, object);
  }
  for (const auto& character : report.replaced) {
    nlohmann::ordered_json object = {
        {"source", report.source}, {"line", character.line}, {"reason", kReplacedReason}};
    AddCharacter(character, object);
    PrintJson(session, object);
  }
  for (const auto& each : report.differences) {
    nlohmann::ordered_json object = {{"source", report.source},     {"line", each.line},
                                     {"column", each.column},       {"reason", "differs"},
                                     {"kind", KindWord(each.kind)}, {"name", ToUtf8(each.name)}};
    if (each.change != Change::kNone) object["note"] = ChangeText(each.change);
    PrintJson(session, object);
  }
}

void PrintReportAsJson(const ImportReport& report, const Session& session) {
  auto header = JsonHeader("import");
  header["before"] = CountsObject(report.before);
  header["found"] = CountsObject(report.found);
  header["after"] = CountsObject(report.after);
  header["encodings"] = nlohmann::ordered_json::array();
  for (const auto& source : report.sources) {
    header["encodings"].push_back(EncodingName(source.encoding));
  }
  PrintJson(session, header);
  for (const auto& source : report.sources) PrintSourceAsJson(source, session);
}

void PrintSourceAsText(const SourceReport& report, const Session& session) {
  auto& err = session.streams.err;
  if (report.encoding != kLibraryEncoding) {
    err << report.source << ": read as " << EncodingName(report.encoding) << '\n';
  }
  for (const auto& [number, text, reason, character] : report.skipped) {
    err << report.source << ':' << number << ": skipped, " << ReasonText(reason);
    if (character) {
      err << ", " << CharacterText(character->text) << " at " << character->line << ':'
          << character->column;
    }
    err << ": " << OneLine(text) << '\n';
  }
  for (const auto& character : report.replaced) {
    err << report.source << ':' << character.line << ':' << character.column << ": "
        << kReplacedReason << ": " << CharacterText(character.text) << '\n';
  }
  for (const auto& each : report.differences) {
    err << report.source << ':' << each.line << ':' << each.column
        << ": differs, taken as Visual Basic reads it: " << QualifiedName(each.kind, each.name);
    if (each.change != Change::kNone) err << " (" << ChangeText(each.change) << ')';
    err << '\n';
  }
}

void PrintReportAsText(const ImportReport& report, const Session& session) {
  for (const auto& source : report.sources) PrintSourceAsText(source, session);
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
  report.before = CountItems(library.Lists());
  auto existing = options.replace ? Existing::kReplace : Existing::kKeep;
  for (const auto& source : options.sources) {
    progress.Show("importing " + SourceName(source));
    ImportSource(source, options, existing, session, library, report);
    existing = Existing::kKeep;
  }
  report.after = CountItems(library.Lists());
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
       "blanks (--reading literal) would store otherwise are reported.\n"
       "A source's encoding is told by its mark, or by being UTF-8; otherwise it is --encoding or\n"
       "windows-1250, that of libraries. A declaration with a character that a library cannot "
       "keep\n"
       "is skipped and reported; in a comment the character becomes \"?\" and is reported.\n\n"},
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
        DefineEncoding(command, options.encoding, "sources");
        DefineForce(command, options.force, kForceSave);
      },
      RunImport);
}

}  // namespace declarium::cli
