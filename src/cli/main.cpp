#include "cli/arguments.h"
#include "cli/command_line.h"
#include "cli/terminal.h"

#include "library/history_folder.h"

int main(int argc, char** argv) {
  declarium::cli::StandardStreams streams;
  auto surroundings = streams.Get();
  surroundings.history = declarium::HistoryFolder();
  surroundings.program = declarium::cli::ProgramFolder();
  return declarium::cli::RunCommandLine(declarium::cli::CommandLineArguments(argc, argv),
                                        surroundings);
}
