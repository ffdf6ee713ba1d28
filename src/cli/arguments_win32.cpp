#include "cli/arguments.h"

#include "text/text.h"
#include "win32/program.h"

namespace declarium::cli {

// The arguments of main are in the system's code page and have lost what that lacks.
std::vector<std::string> CommandLineArguments(int, char**) {
  std::vector<std::string> arguments;
  for (const auto& argument : win32::ProgramArguments()) arguments.push_back(ToUtf8(argument));
  return arguments;
}

std::filesystem::path ProgramFolder() {
  return std::filesystem::path(win32::ProgramPath()).parent_path();
}

}  // namespace declarium::cli
