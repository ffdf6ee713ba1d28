#include "cli/command_line.h"

#include <algorithm>
#include <map>
#include <new>
#include <ostream>
#include <stdexcept>

#include "cli/audit_command.h"
#include "cli/basket_commands.h"
#include "cli/check_command.h"
#include "cli/command_set.h"
#include "cli/convert_command.h"
#include "cli/facts_command.h"
#include "cli/find_commands.h"
#include "cli/generate_command.h"
#include "cli/history_commands.h"
#include "cli/import_command.h"
#include "cli/library_commands.h"
#include "cli/missing_command.h"
#include "cli/parse_command.h"
#include "cli/session.h"
#include "cli/shared_command.h"
#include "cli/show_command.h"

namespace declarium::cli {
namespace {

constexpr const char* kDescription =
    "Keeps libraries of Visual Basic declarations (Declare, Const, Type) and inserts them into "
    "modules.";

constexpr const char* kNotEnoughMemory = "not enough memory for files of this size";

constexpr const char* kFooter =
    "Names: upper and lower case are alike; const:, declare: or type: in front names the kind.\n"
    "Exit status: 0 done, 1 nothing found or an unknown name, 2 wrong use, 3 a file that cannot "
    "be\n"
    "read, is no library or cannot be written.\n\n"
    "Example:\n  declarium-cli import Win32.api --create Windows WinShell.bas";

void DefineCommonOptions(CLI::App& app, Session& session) {
  app.set_version_flag("--version", "declarium-cli " DECLARIUM_VERSION);
  app.add_flag_callback(
      "--json", [&] { session.format = OutputFormat::kJsonLines; }, "Print results as JSON Lines");
  app.add_flag_callback(
      "--no-history", [&] { session.saver.Kept().TurnOff(); },
      "Do not keep what is replaced or could not be written");
  const std::map<std::string, ColorUse> uses = {
      {"auto", ColorUse::kAuto}, {"always", ColorUse::kAlways}, {"never", ColorUse::kNever}};
  app.add_option("--color", session.color, "Color source text; auto does so on a terminal")
      ->transform(CLI::CheckedTransformer(uses, CLI::ignore_case).description(""))
      ->type_name("auto|always|never");
}

void Define(CLI::App& app, Session& session) {
  app.name("declarium-cli");
  app.allow_windows_style_options(false);
  app.fallthrough();
  app.require_subcommand(1);
  app.footer(kFooter);
  app.get_formatter()->column_width(28);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND ...");
  app.get_formatter()->label("Positionals", "Arguments");
  app.get_formatter()->label("REQUIRED", "");
  DefineCommonOptions(app, session);
  const CommandSet set{app, session};
  AddLibraryCommands(set);
  AddImportCommand(set);
  AddParseCommand(set);
  AddCheckCommand(set);
  AddAuditCommand(set);
  AddConvertCommand(set);
  AddShowCommand(set);
  AddSharedCommand(set);
  AddFactsCommand(set);
  AddFindCommands(set);
  AddBasketCommands(set);
  AddMissingCommand(set);
  AddGenerateCommand(set);
  AddHistoryCommands(set);
}

ExitStatus Parse(CLI::App& app, std::span<const std::string> arguments, const Session& session) {
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    return session.status;
  } catch (const CLI::CallForHelp&) {
    session.streams.out << app.help();
    return ExitStatus::kDone;
  } catch (const CLI::CallForVersion& version) {
    session.streams.out << version.what() << '\n';
    return ExitStatus::kDone;
  } catch (const CLI::ParseError& error) {
    session.Say(error.what());
    session.streams.err << "Try --help.\n";
    return ExitStatus::kWrongUse;
  }
}

ExitStatus Run(std::span<const std::string> arguments, Streams& streams) {
  FileSaver saver(streams.files, History(streams.files, streams.history));
  Session session{streams, saver};
  try {
    CLI::App app(kDescription);
    Define(app, session);
    auto status = Parse(app, arguments, session);
    if (!streams.out.flush()) {
      throw CommandFailed(ExitStatus::kFileFailed, "standard output: cannot be written");
    }
    return status;
  } catch (const CommandFailed& failure) {
    session.Say(failure.what());
    return failure.Status();
  } catch (const std::bad_alloc&) {
    session.Say(kNotEnoughMemory);
    return ExitStatus::kFileFailed;
  } catch (const std::length_error&) {
    session.Say(kNotEnoughMemory);
    return ExitStatus::kFileFailed;
  } catch (const std::exception& error) {
    session.Say(error.what());
    return ExitStatus::kFileFailed;
  }
}

}  // namespace

int RunCommandLine(std::span<const std::string> arguments, Streams& streams) noexcept {
  return static_cast<int>(Run(arguments, streams));
}

}  // namespace declarium::cli
