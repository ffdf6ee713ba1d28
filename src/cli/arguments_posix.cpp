#include "cli/arguments.h"

namespace declarium::cli {

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
  if (argc < 1) return {};
  return {argv + 1, argv + argc};
}

}  // namespace declarium::cli
