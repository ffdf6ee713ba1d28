// The program's arguments as UTF-8, and where its file is. Two sources implement it, one per
// operating system.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace declarium::cli {

// The arguments behind the program's name; takes those of main.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

// The folder of the program's file; empty when the system does not tell.
[[nodiscard]] std::filesystem::path ProgramFolder();

}  // namespace declarium::cli
