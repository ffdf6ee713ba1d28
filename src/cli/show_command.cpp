#include "cli/show_command.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/colored_text.h"
#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/target_option.h"

#include "source/item_text.h"
#include "target/target_writer.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct ShowOptions {
  std::string file;
  std::vector<std::string> names;
  vb::Audience target = vb::Audience::kVb6;
};

void ShowItem(const ItemView& item, const std::filesystem::path& library, TargetWriter& writer,
              const Session& session) {
  const auto rewriting = writer.Write(ItemText(item.kind, item.name, item.item), library);
  const auto& code = rewriting.text;
  if (!session.IsJson()) {
    session.streams.out << (session.UsesColor() ? ColoredLines(code, writer.Target()) : Lines(code))
                        << '\n';
    return;
  }
  auto object = JsonItem(item.kind, item.name);
  object["code"] = ToUtf8(code);
  object["runs"] = RunsArray(code, writer.Target());
  for (const auto& change : rewriting.changes) {
    if (change.missing.empty()) continue;
    object["missing"] = true;
    object["reason"] = change.missing;
  }
  PrintJson(session, object);
}

ExitStatus RunShow(const ShowOptions& options, const Session& session) {
  const auto excerpt = OpenExcerpt(options.file);
  const auto items = ResolveNames(excerpt, options.names);
  if (session.IsJson()) PrintJson(session, JsonHeader("show"));
  TargetWriter writer(options.target, session.streams.program);
  for (const auto& item : items) ShowItem(item, PathOf(options.file), writer, session);
  return ExitStatus::kDone;
}

}  // namespace

void AddShowCommand(const CommandSet& set) {
  AddCommand<ShowOptions>(
      set,
      {"show", "Show the source text of items",
       "declarium-cli show Win32.api SetWindowPos type:RECT"},
      [](CLI::App& command, ShowOptions& options) {
        DefineFile(command, options.file);
        DefineNames(command, options.names);
        DefineTarget(command, options.target);
      },
      RunShow);
}

}  // namespace declarium::cli
