// --target: for whom a command writes declarations.
#pragma once

#include <filesystem>
#include <vector>

#include "cli/command_set.h"

#include "facts/facts_file.h"
#include "target/output_target.h"

namespace declarium::cli {

// --target; left out, `target` stays.
CLI::Option* DefineTarget(CLI::App& command, OutputTarget& target);

// The facts beside the libraries, of those that have some.
[[nodiscard]] std::vector<FactsFile> FactsBeside(
    const std::vector<std::filesystem::path>& libraries);

}  // namespace declarium::cli
