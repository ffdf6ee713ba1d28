#include "cli/history_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/library_files.h"
#include "cli/output.h"

#include "library/file_io.h"
#include "library/file_saver.h"

namespace declarium::cli {
namespace {

struct HistoryOptions {
  std::string file;
};

ExitStatus RunHistory(const HistoryOptions& options, const Session& session) {
  const auto path = PathOf(options.file);
  const auto versions = session.saver.Kept().Versions(path);
  if (session.IsJson()) {
    auto header = JsonHeader("history");
    header["path"] = PathText(IdentityOf(path));
    PrintJson(session, header);
  }
  for (const auto& version : versions) {
    const auto time = LongTime(version.written);
    const auto reason = ReasonWord(version.reason);
    if (session.IsJson()) {
      PrintJson(session, {{"version", version.number},
                          {"time", time},
                          {"bytes", version.bytes},
                          {"reason", reason}});
    } else {
      session.streams.out << version.number << '\t' << time << '\t' << version.bytes << '\t'
                          << reason << '\n';
    }
  }
  return versions.empty() ? ExitStatus::kNothingFound : ExitStatus::kDone;
}

struct RestoreOptions {
  std::string file;
  int version = 0;
  std::string out;
  bool force = false;
};

ExitStatus RunRestore(const RestoreOptions& options, const Session& session) {
  const auto& history = session.saver.Kept();
  const auto versions = history.Versions(PathOf(options.file));
  const auto version = std::ranges::find(versions, options.version, &Version::number);
  if (version == versions.end()) {
    throw CommandFailed(ExitStatus::kNothingFound, options.file + ": there is no version " +
                                                       std::to_string(options.version) +
                                                       "; declarium-cli history lists them");
  }
  const auto bytes = history.Read(*version);
  if (!bytes) throw FileFailed(bytes.error());
  if (!options.out.empty()) CheckReplaceable(options.out, ForceOf(options.force));
  WriteBytes(session, *bytes, options.out.empty() ? options.file : options.out);
  if (session.IsJson()) PrintJson(session, JsonHeader("restore"));
  return ExitStatus::kDone;
}

}  // namespace

void AddHistoryCommands(const CommandSet& set) {
  AddCommand<HistoryOptions>(
      set,
      {"history", "List the kept versions of a file", "declarium-cli history Win32.api",
       "Every file that is replaced is kept first: the newest 30 versions of each file, 500 MB in\n"
       "all. A line is the version's number, when it was written, its bytes and why it was kept:\n"
       "replaced, unwritten or unfinished.\n\n"},
      [](CLI::App& command, HistoryOptions& options) {
        command.add_option("FILE", options.file, "A library or source file, also one that is gone")
            ->required()
            ->type_name("");
      },
      RunHistory);
  AddCommand<RestoreOptions>(
      set,
      {"restore", "Bring a kept version of a file back",
       "declarium-cli restore Win32.api 12 -o Win32-old.api",
       "What the file holds now is kept as a version too.\n\n"},
      [](CLI::App& command, RestoreOptions& options) {
        command.add_option("FILE", options.file, "The file, as history takes it")
            ->required()
            ->type_name("");
        command.add_option("VERSION", options.version, "The number that history shows")
            ->required()
            ->type_name("");
        command.add_option("-o,--output", options.out, "Write the version to this file instead")
            ->type_name("OUT");
        DefineForce(command, options.force,
                    "Replace an OUT that is a library or holds more than declarations");
      },
      RunRestore);
}

}  // namespace declarium::cli
