#include "cli/shared_command.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/facts_command.h"
#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"

#include "basket/closure.h"
#include "needs/shared_items.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct SharedOptions {
  std::string file;
  std::string name;
  bool closure = false;
  bool constants = false;
};

void PrintShared(const Session& session, Kind kind, std::u16string_view name, bool found) {
  if (session.IsJson()) {
    auto object = JsonItem(kind, name);
    object["found"] = found;
    return PrintJson(session, object);
  }
  session.streams.out << QualifiedName(kind, name) << (found ? "" : "\tnot in the library") << '\n';
}

void PrintReference(const Session& session, const Reference& reference) {
  if (session.IsJson()) {
    auto object = JsonItem(reference.kind, reference.name);
    object["found"] = reference.found.has_value();
    object["level"] = reference.level;
    object["via"] = ToUtf8(reference.via);
    return PrintJson(session, object);
  }
  session.streams.out << QualifiedName(reference.kind, reference.name) << "\tlevel "
                      << reference.level << "\tvia " << OneLine(reference.via)
                      << (reference.found ? "" : "\tnot in the library") << '\n';
}

std::vector<Reference> References(const SharedOptions& options, const Library& library,
                                  const ItemView& item) {
  if (!options.constants) return FollowSharedItems(library, item);
  return FollowSharedItems(library, item, OpenFacts(library.path));
}

ExitStatus RunShared(const SharedOptions& options, const Session& session) {
  if (options.constants && !options.closure) {
    throw CommandFailed(ExitStatus::kWrongUse, "--constants: only with --closure");
  }
  const auto library = LoadLibrary(options.file);
  const auto item = ResolveNames(library, {&options.name, 1}).front();
  const auto references =
      options.closure ? References(options, library, item) : std::vector<Reference>();
  if (session.IsJson()) {
    auto header = JsonHeader("shared");
    header.update(JsonItem(item.kind, item.name));
    PrintJson(session, header);
  }
  if (options.closure) {
    for (const auto& reference : references) PrintReference(session, reference);
    return ExitStatus::kDone;
  }
  for (const auto& [name, icon] : CreateShared(item.kind, item.item)) {
    const auto kind = *KindOfIcon(icon);
    PrintShared(session, kind, name, FindItem(library, kind, name).has_value());
  }
  return ExitStatus::kDone;
}

}  // namespace

void AddSharedCommand(const CommandSet& set) {
  AddCommand<SharedOptions>(
      set,
      {"shared", "List the constants and records that an item refers to",
       "declarium-cli shared Win32.api WINDOWPLACEMENT --closure"},
      [](CLI::App& command, SharedOptions& options) {
        DefineFile(command, options.file);
        DefineName(command, options.name);
        command.add_flag("--closure", options.closure, "Follow the references through the library");
        command.add_flag("--constants", options.constants,
                         "With --closure: also the constants of parameters and members, by the "
                         "facts beside the library");
      },
      RunShared);
}

}  // namespace declarium::cli
