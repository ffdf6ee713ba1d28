// How a group of commands puts itself into the program's command line.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/session.h"

namespace declarium::cli {

struct CommandSet {
  CLI::App& app;
  Session& session;
};

struct CommandText {
  const char* name;
  const char* description;   // a line of the list of commands
  const char* example;       // a whole command line
  const char* details = "";  // what else its help says, whole lines
};

// Adds a command: `define` gives it the options that fill an `Options`, `run` does its work. The
// options live as long as the command line.
template <class Options, class Define>
void AddCommand(const CommandSet& set, const CommandText& text, Define define,
                ExitStatus (*run)(const Options&, const Session&)) {
  auto* const command = set.app.add_subcommand(text.name, text.description);
  command->group("Commands");
  command->footer(std::string(text.details) + "Example:\n  " + text.example);
  auto options = std::make_shared<Options>();
  define(*command, *options);
  command->callback(
      [options, run, &session = set.session] { session.status = run(*options, session); });
}

// One of these words in any case, which becomes the word as written here. The help shows the words
// as the option's type.
inline CLI::Validator OneOf(const std::vector<std::string>& words) {
  return CLI::IsMember(words, CLI::ignore_case).description("");
}

// The FILE that every command on a library begins with.
inline void DefineFile(CLI::App& command, std::string& file) {
  command.add_option("FILE", file, "The library, a \".api\" file")->required()->type_name("");
}

// NAME..., at least one.
inline void DefineNames(CLI::App& command, std::vector<std::string>& names) {
  command.add_option("NAME", names, "Item names; \"type:RECT\" names the kind")
      ->required()
      ->type_name("");
}

// SOURCE..., at least one.
inline void DefineSources(CLI::App& command, std::vector<std::string>& sources) {
  command
      .add_option("SOURCE", sources,
                  "Visual Basic source files, projects (.vbp, .vbg, .mak) or folders of modules; "
                  "- is standard input")
      ->required()
      ->type_name("");
}

// NAME, just one.
inline void DefineName(CLI::App& command, std::string& name) {
  command.add_option("NAME", name, "Item name; \"type:RECT\" names the kind")
      ->required()
      ->type_name("");
}

// What --force of a command means that saves a library.
inline constexpr const char* kForceSave =
    "Save though somebody else has changed the file meanwhile";

// --force; left out, `force` stays false.
inline void DefineForce(CLI::App& command, bool& force, const std::string& description) {
  command.add_flag("--force", force, description);
}

// --encoding; left out, `encoding` stays empty.
inline void DefineEncoding(CLI::App& command, std::string& encoding, const std::string& what) {
  command
      .add_option("--encoding", encoding,
                  "Encoding of " + what + " that neither have a mark nor are UTF-8")
      ->type_name("NAME");
}

// --kind; left out, `kind` stays empty.
inline CLI::Option* DefineKind(CLI::App& command, std::string& kind) {
  return command.add_option("--kind", kind, "Kind of the items")
      ->transform(OneOf({"const", "declare", "type"}))
      ->type_name("const|declare|type");
}

}  // namespace declarium::cli
