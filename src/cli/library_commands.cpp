#include "cli/library_commands.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/library_files.h"
#include "cli/names.h"
#include "cli/output.h"
#include "cli/target_option.h"

#include "library/catalogue.h"
#include "library/file_format.h"
#include "library/file_io.h"
#include "source/item_text.h"
#include "target/target_writer.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

struct NewOptions {
  std::string file;
  std::string title;
  bool force = false;
};

ExitStatus RunNew(const NewOptions& options, const Session& session) {
  const auto title = CheckedTitle(options.title);
  const auto path = PathOf(options.file);
  std::error_code ignored;
  if (!options.force && std::filesystem::exists(path, ignored)) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        PathText(path) + ": exists already; --force replaces it");
  }
  WriteBytes(session, EmptyLibraryBytes(title), options.file);
  if (session.IsJson()) PrintJson(session, JsonHeader("new"));
  return ExitStatus::kDone;
}

struct ListOptions {
  std::string file;
  std::string kind;
};

void ListItem(const Session& session, const ItemView& item) {
  if (!session.IsJson()) return PrintItem(session, item.kind, item.name);
  auto object = JsonItem(item.kind, item.name);
  object["item"] = ToUtf8(item.item);
  PrintJson(session, object);
}

ExitStatus RunList(const ListOptions& options, const Session& session) {
  const auto library = LoadLibrary(options.file);
  const auto only = KindOfWord(FromUtf8(options.kind));
  if (session.IsJson()) {
    auto header = JsonHeader("list");
    header["title"] = ToUtf8(library.Title());
    PrintJson(session, header);
  }
  for (const auto kind : kKinds) {
    if (only && kind != *only) continue;
    const auto& lists = library[kind];
    for (std::size_t i = 0; i < lists.names.size(); ++i) {
      ListItem(session, {kind, lists.names[i], lists.ItemAt(i)});
    }
  }
  return ExitStatus::kDone;
}

struct ExportOptions {
  std::string file;
  std::string out;
  bool force = false;
  vb::Audience target = vb::Audience::kVb6;
};

ExitStatus RunExport(const ExportOptions& options, const Session& session) {
  const auto library = LoadLibrary(options.file);
  CheckReplaceable(options.out, ForceOf(options.force));
  TargetWriter writer(options.target, session.streams.program);
  WriteSource(session, writer.Write(ExportText(library), PathOf(options.file)).text, options.out);
  if (session.IsJson()) PrintJson(session, JsonHeader("export"));
  return ExitStatus::kDone;
}

struct RenameOptions {
  std::string file;
  std::string title;
  bool force = false;
};

ExitStatus RunRename(const RenameOptions& options, const Session& session) {
  auto library = LoadLibrary(options.file);
  library.SetTitle(CheckedTitle(options.title));
  SaveLibrary(session, library, ForceOf(options.force));
  if (session.IsJson()) PrintJson(session, JsonHeader("rename"));
  return ExitStatus::kDone;
}

struct DeleteOptions {
  std::string file;
  std::vector<std::string> names;
  bool force = false;
};

// Each place once and later ones first, so that removing an item moves none of the others.
std::vector<ItemPlace> PlacesFromTheEnd(const Library& library,
                                        const std::vector<std::string>& names) {
  auto places = ResolvePlaces(library, names);
  std::ranges::sort(places, std::ranges::greater());
  const auto repeated = std::ranges::unique(places);
  places.erase(repeated.begin(), repeated.end());
  return places;
}

ExitStatus RunDelete(const DeleteOptions& options, const Session& session) {
  const auto before = LoadLibrary(options.file);
  const auto places = PlacesFromTheEnd(before, options.names);
  auto after = before;
  for (const auto& [kind, position] : places) after.RemoveItem(kind, position);
  SaveLibrary(session, after, ForceOf(options.force));

  if (session.IsJson()) PrintJson(session, JsonHeader("delete"));
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    PrintItem(session, place->kind, before[place->kind].names[place->position]);
  }
  return ExitStatus::kDone;
}

struct DatabasesOptions {
  std::string folder = ".";
};

void CheckFolder(const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::directory_iterator files(folder, error);
  if (error) {
    throw FileFailed(
        Error{ErrorKind::kCannotRead, PathText(folder), error.message(), error.value()});
  }
}

ExitStatus RunDatabases(const DatabasesOptions& options, const Session& session) {
  const auto folder = PathOf(options.folder);
  CheckFolder(folder);
  session.SayRecovered(session.saver.LookInto(folder));
  const auto databases = EnumDatabases(folder);
  if (session.IsJson()) PrintJson(session, JsonHeader("databases"));
  for (const auto& [title, path] : databases) {
    const auto path_text = PathText(path);
    if (session.IsJson()) {
      PrintJson(session, {{"title", ToUtf8(title)}, {"path", path_text}});
    } else {
      session.streams.out << OneLine(FromUtf8(path_text)) << '\t' << OneLine(title) << '\n';
    }
  }
  return databases.empty() ? ExitStatus::kNothingFound : ExitStatus::kDone;
}

void AddNew(const CommandSet& set) {
  AddCommand<NewOptions>(
      set,
      {"new", "Create an empty library", "declarium-cli new Win32.api \"Windows declarations\""},
      [](CLI::App& command, NewOptions& options) {
        DefineFile(command, options.file);
        command.add_option("TITLE", options.title, "The title that catalogues show")
            ->required()
            ->type_name("");
        DefineForce(command, options.force, "Replace an existing file");
      },
      RunNew);
}

void AddList(const CommandSet& set) {
  AddCommand<ListOptions>(
      set, {"list", "List the items of a library", "declarium-cli list Win32.api --kind type"},
      [](CLI::App& command, ListOptions& options) {
        DefineFile(command, options.file);
        DefineKind(command, options.kind);
      },
      RunList);
}

void AddExport(const CommandSet& set) {
  AddCommand<ExportOptions>(
      set,
      {"export", "Write a whole library as source text", "declarium-cli export Win32.api all.bas"},
      [](CLI::App& command, ExportOptions& options) {
        DefineFile(command, options.file);
        command
            .add_option("OUT", options.out,
                        "The file to write; one that an export wrote is replaced")
            ->required()
            ->type_name("");
        DefineTarget(command, options.target);
        DefineForce(command, options.force, "Replace any other file too");
      },
      RunExport);
}

void AddRename(const CommandSet& set) {
  AddCommand<RenameOptions>(
      set,
      {"rename", "Give a library another title", "declarium-cli rename Win32.api \"Windows NT\""},
      [](CLI::App& command, RenameOptions& options) {
        DefineFile(command, options.file);
        command.add_option("TITLE", options.title, "The new title")->required()->type_name("");
        DefineForce(command, options.force, kForceSave);
      },
      RunRename);
}

void AddDelete(const CommandSet& set) {
  AddCommand<DeleteOptions>(
      set,
      {"delete", "Remove items from a library", "declarium-cli delete Win32.api type:RECT MAX_PATH",
       "An item spelled exactly as NAME goes before one in other cases.\n\n"},
      [](CLI::App& command, DeleteOptions& options) {
        DefineFile(command, options.file);
        DefineNames(command, options.names);
        DefineForce(command, options.force, kForceSave);
      },
      RunDelete);
}

void AddDatabases(const CommandSet& set) {
  AddCommand<DatabasesOptions>(
      set,
      {"databases", "List the libraries of a folder and their titles",
       "declarium-cli databases \"C:\\Program Files\\Declarium\""},
      [](CLI::App& command, DatabasesOptions& options) {
        command.add_option("DIR", options.folder, "The folder; the current one when left out")
            ->type_name("");
      },
      RunDatabases);
}

}  // namespace

void AddLibraryCommands(const CommandSet& set) {
  AddNew(set);
  AddList(set);
  AddExport(set);
  AddRename(set);
  AddDelete(set);
  AddDatabases(set);
}

}  // namespace declarium::cli
