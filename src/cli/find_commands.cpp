#include "cli/find_commands.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/search_command.h"

#include "search/quick_find.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct FindOptions {
  std::string file;
  std::string text;
  std::string kind;
};

ExitStatus RunFind(const FindOptions& options, const Session& session) {
  if (options.text.empty()) throw CommandFailed(ExitStatus::kWrongUse, "PATTERN must not be empty");
  const auto excerpt = OpenExcerpt(options.file);
  const auto kind = *KindOfWord(FromUtf8(options.kind));
  const auto& names = excerpt.Names()[kind].names;
  const auto positions = FindNames(names, FromUtf8(options.text));
  if (session.IsJson()) PrintJson(session, JsonHeader("find"));
  for (const auto position : positions) PrintItem(session, kind, names[position]);
  return positions.empty() ? ExitStatus::kNothingFound : ExitStatus::kDone;
}

std::optional<std::size_t> CompletedRow(const StringList& names, std::u16string_view text) {
  // An emptied box clears the selection.
  return text.empty() ? std::nullopt : TypeAheadRow(RowsOf(names), text);
}

ExitStatus RunComplete(const FindOptions& options, const Session& session) {
  const auto excerpt = OpenExcerpt(options.file);
  const auto kind = *KindOfWord(FromUtf8(options.kind));
  const auto& names = excerpt.Names()[kind].names;
  const auto row = CompletedRow(names, FromUtf8(options.text));
  const auto name = row ? names[*row] : std::u16string_view();
  if (session.IsJson()) {
    auto header = JsonHeader("complete");
    header["row"] = row ? static_cast<std::ptrdiff_t>(*row) : -1;
    header["name"] = ToUtf8(name);
    PrintJson(session, header);
  } else if (row) {
    session.streams.out << *row << '\t' << QualifiedName(kind, name) << '\n';
  }
  return row ? ExitStatus::kDone : ExitStatus::kNothingFound;
}

}  // namespace

void AddFindCommands(const CommandSet& set) {
  AddCommand<FindOptions>(
      set,
      {"find", "Find the names of a kind that contain a pattern",
       "declarium-cli find Win32.api \"Get*Text\" --kind declare"},
      [](CLI::App& command, FindOptions& options) {
        DefineFile(command, options.file);
        command
            .add_option("PATTERN", options.text,
                        "Part of the name; ? * # and [lists] are wildcards, case does not matter")
            ->required()
            ->type_name("");
        DefineKind(command, options.kind)->required();
      },
      RunFind);
  AddCommand<FindOptions>(
      set,
      {"complete", "Tell the row, counted from 0, that typing a beginning selects",
       "declarium-cli complete Win32.api getw --kind declare"},
      [](CLI::App& command, FindOptions& options) {
        DefineFile(command, options.file);
        command.add_option("TEXT", options.text, "Beginning of the name")
            ->required()
            ->type_name("");
        DefineKind(command, options.kind)->required();
      },
      RunComplete);
  AddSearchCommand(set);
}

}  // namespace declarium::cli
