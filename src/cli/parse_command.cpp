#include "cli/parse_command.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "cli/output.h"
#include "cli/parsed_json.h"
#include "cli/source_projects.h"

#include "text/text.h"
#include "vb/definitions.h"
#include "vb/module.h"
#include "vb/name.h"
#include "vb/name_use.h"

namespace declarium::cli {
namespace {

struct ParseOptions {
  std::vector<std::string> sources;
  bool modules = false;
  bool uses = false;
  vb::Target target = vb::Target::kVb6;
};

std::string PlaceText(const std::string& source, const vb::Place& place) {
  return source + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
}

// The physical line that `place` stands in.
std::u16string_view LineOf(std::u16string_view text, const vb::Place& place) {
  const auto start = place.offset - (place.column - 1);
  const auto end = std::min(text.find_first_of(u"\r\n", start), text.size());
  return text.substr(start, end - start);
}

// As compilers say it: the place and what is wrong, the line, a caret below the place.
void PrintError(const std::string& source, std::u16string_view text, const vb::SyntaxError& error,
                std::ostream& out) {
  const auto line = LineOf(text, error.place);
  out << PlaceText(source, error.place) << ": error: expected " << error.expected;
  if (!error.found.empty()) out << ", found " << OneLine(error.found);
  out << '\n' << "    " << Lines(line) << "\n    ";
  // Tabs of the line stand above tabs, so that the caret is below its place however wide they are.
  for (const char16_t unit : line.substr(0, error.place.column - 1))
    out << (unit == u'\t' ? '\t' : ' ');
  out << "^\n";
}

void PrintModule(const SourceModule& source, std::ostream& out) {
  const auto& module = source.parsed;
  out << source.name << "\tmodule\t" << vb::ModuleKindText(module.kind) << '\t'
      << OneLine(module.Name()) << '\t' << module.lines << " lines\n";
  for (const auto& procedure : module.procedures) {
    out << PlaceText(source.name, procedure.place) << "\tprocedure\t" << ScopeWord(procedure.scope)
        << '\t' << OneLine(procedure.name) << '\n';
  }
}

// Continued lines and the lines of a block in one.
std::string InOneLine(std::u16string_view text) {
  std::u16string line;
  const auto lines = Replace(Replace(text, kCrLf, u"\n"), u"\t", u" ");
  for (const auto part : Split(lines, u'\n')) {
    if (!line.empty()) line += u" : ";
    line += Trim(part);
  }
  return OneLine(line);
}

void PrintDeclaration(const SourceModule& source, const vb::Declaration& declaration,
                      std::ostream& out) {
  out << PlaceText(source.name, declaration.place) << '\t' << DeclarationWord(declaration) << '\t'
      << ScopeWord(declaration.scope) << '\t' << OneLine(declaration.name) << '\t'
      << InOneLine(declaration.text);
  if (declaration.condition != 0)
    out << "\t#If " << OneLine(source.parsed.conditions[declaration.condition].text);
  out << '\n';
}

// Without the functions and statements of the language.
std::vector<vb::NameUse> UsesOf(const SourceModule& source) {
  auto uses = vb::ReadNameUses(source.text, source.parsed);
  std::erase_if(uses, [](const vb::NameUse& use) { return vb::IsReservedWord(use.name); });
  return uses;
}

void PrintAsText(const SourceModule& source, const ParseOptions& options, const Session& session) {
  auto& out = session.streams.out;
  if (options.modules) PrintModule(source, out);
  for (const auto& declaration : source.parsed.declarations)
    PrintDeclaration(source, declaration, out);
  if (options.uses) {
    for (const auto& use : UsesOf(source))
      out << PlaceText(source.name, use.place) << "\tuse\t" << OneLine(use.name) << '\n';
  }
  for (const auto& error : source.parsed.errors)
    PrintError(source.name, source.text, error, session.streams.err);
}

void PrintProject(const SourceProject& source, std::ostream& out) {
  out << source.name << "\tproject\t" << OneLine(source.project.name) << '\t'
      << source.modules.size() << " modules\n";
  for (const auto& constant : source.project.constants)
    out << PlaceText(source.name, constant.place) << "\tconstant\t" << OneLine(constant.name)
        << '\t' << OneLine(constant.value) << '\n';
  for (const auto& reference : source.project.references)
    out << PlaceText(source.name, reference.place) << "\treference\t" << OneLine(reference.path)
        << '\t' << OneLine(reference.description) << '\n';
}

void PrintAsText(const SourceProject& source, const ParseOptions& options, const Session& session) {
  if (options.modules && !source.name.empty()) PrintProject(source, session.streams.out);
  for (const auto& module : source.modules) PrintAsText(module, options, session);
  for (const auto& error : source.project.errors)
    PrintError(source.name, source.text, error, session.streams.err);
}

void PrintAsJson(const SourceModule& source, const ParseOptions& options,
                 vb::ProjectConstants constants, vb::Definitions& everything,
                 const Session& session) {
  // A module's own declarations come before those of the others.
  vb::Definitions definitions(options.target, &everything);
  definitions.Add(source.parsed, constants);
  if (options.modules) PrintJson(session, ModuleObject(source.name, source.parsed));
  for (const auto& declaration : source.parsed.declarations)
    PrintJson(session, DeclarationObject(source.name, source.parsed, declaration, definitions));
  for (const auto& error : source.parsed.errors)
    PrintJson(session, ErrorObject(source.name, error));
  if (!options.uses) return;
  for (const auto& use : UsesOf(source)) PrintJson(session, UseObject(source.name, use));
}

void PrintAsJson(const SourceProject& source, const ParseOptions& options, const Session& session) {
  const auto& constants = source.project.constants;
  vb::Definitions everything(options.target);
  for (const auto& module : source.modules) everything.Add(module.parsed, constants);
  if (options.modules && !source.name.empty())
    PrintJson(session, ProjectObject(source.name, source.project));
  for (const auto& module : source.modules)
    PrintAsJson(module, options, constants, everything, session);
  for (const auto& error : source.project.errors)
    PrintJson(session, ErrorObject(source.name, error));
}

ExitStatus RunParse(const ParseOptions& options, const Session& session) {
  const auto sources = ReadSources(options.sources, session);
  if (session.IsJson()) PrintJson(session, JsonHeader("parse"));
  for (const auto& source : sources) {
    if (session.IsJson()) {
      PrintAsJson(source, options, session);
    } else {
      PrintAsText(source, options, session);
    }
  }
  const bool is_whole = std::ranges::all_of(sources, &SourceProject::has_all_files);
  return is_whole ? ExitStatus::kDone : ExitStatus::kFileFailed;
}

}  // namespace

void AddParseCommand(const CommandSet& set) {
  AddCommand<ParseOptions>(
      set,
      {"parse", "Show what source files declare, as Visual Basic reads them",
       "declarium-cli parse WinShell.bas",
       "One line a declaration: its place, kind, scope, name and text. Where the language would\n"
       "refuse a declaration, the place and what was expected there go to standard error. With\n"
       "--json also parameters, values and the layout of records. A project's modules are read "
       "with\n"
       "its conditional constants; one that cannot be read is told with the project's line.\n\n"},
      [](CLI::App& command, ParseOptions& options) {
        DefineSources(command, options.sources);
        command.add_flag(
            "--modules", options.modules,
            "Also the modules themselves and their procedures, and the projects with what they "
            "refer to");
        command.add_flag("--uses", options.uses, "Also the names that the code uses");
        const std::map<std::string, vb::Target> targets = {{"vb6", vb::Target::kVb6},
                                                           {"vba7", vb::Target::kVba7x64},
                                                           {"vba7-only", vb::Target::kVba7x64},
                                                           {"twinbasic", vb::Target::kTwinBasic}};
        command
            .add_option("--target", options.target,
                        "For whom sizes and offsets are told: vb6, vba7, vba7-only or twinbasic; "
                        "all but vb6 in 64 bits")
            ->transform(CLI::CheckedTransformer(targets, CLI::ignore_case).description(""))
            ->type_name("TARGET");
      },
      RunParse);
}

}  // namespace declarium::cli
