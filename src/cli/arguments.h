// The program's arguments as UTF-8. Two sources implement it, one per operating system.
#pragma once

#include <string>
#include <vector>

namespace declarium::cli {

// The arguments behind the program's name; takes those of main.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

}  // namespace declarium::cli
