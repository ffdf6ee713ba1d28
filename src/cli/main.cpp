#include "cli/arguments.h"
#include "cli/command_line.h"
#include "cli/terminal.h"

int main(int argc, char** argv) {
  declarium::cli::StandardStreams streams;
  return declarium::cli::RunCommandLine(declarium::cli::CommandLineArguments(argc, argv),
                                        streams.Get());
}
