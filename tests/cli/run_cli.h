// Runs the command line in this process.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_line.h"

namespace declarium::cli {

struct CliRun {
  int status;
  std::string out;
  std::string err;
};

struct CliSurroundings {
  std::string input = {};
  bool out_is_terminal = false;
  bool err_is_terminal = false;
  bool no_color = false;
  std::filesystem::path history = {};
  FileSystem& files = SystemFiles();
  std::filesystem::path program = {};
};

inline CliRun RunCli(const std::vector<std::string>& arguments,
                     const CliSurroundings& surroundings = {}) {
  std::istringstream in(surroundings.input);
  std::ostringstream out;
  std::ostringstream err;
  Streams streams{in,
                  out,
                  err,
                  surroundings.out_is_terminal,
                  surroundings.err_is_terminal,
                  surroundings.no_color,
                  surroundings.history,
                  surroundings.files,
                  surroundings.program};
  const int status = RunCommandLine(arguments, streams);
  return {status, out.str(), err.str()};
}

}  // namespace declarium::cli
