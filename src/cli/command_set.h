// How a group of commands puts itself into the program's command line.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "cli/session.h"

namespace declarium::cli {

struct CommandSet {
  CLI::App& app;
  Session& session;
};

struct CommandText {
  const char* name;
  const char* description;
  const char* example;  // a whole command line
};

// Adds a command: `define` gives it the options that fill an `Options`, `run` does its work. The
// options live as long as the command line.
template <class Options, class Define>
void AddCommand(const CommandSet& set, const CommandText& text, Define define,
                ExitStatus (*run)(const Options&, const Session&)) {
  auto* const command = set.app.add_subcommand(text.name, text.description);
  command->footer(std::string("Example:\n  ") + text.example);
  auto options = std::make_shared<Options>();
  define(*command, *options);
  command->callback(
      [options, run, &session = set.session] { session.status = run(*options, session); });
}

// The FILE that every command on a library begins with.
inline void DefineFile(CLI::App& command, std::string& file) {
  command.add_option("FILE", file, "The library, a \".api\" file")->required();
}

// NAME..., at least one.
inline void DefineNames(CLI::App& command, std::vector<std::string>& names) {
  command.add_option("NAME", names, "Item names; \"type:RECT\" names the kind")->required();
}

// --kind; left out, `kind` stays empty.
inline CLI::Option* DefineKind(CLI::App& command, std::string& kind) {
  return command.add_option("--kind", kind, "Kind of the items")
      ->check(CLI::IsMember({"const", "declare", "type"}, CLI::ignore_case))
      ->type_name("const|declare|type");
}

}  // namespace declarium::cli
