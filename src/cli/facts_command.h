// The command facts: what is known of an item beside its text.
#pragma once

#include <filesystem>

#include "cli/command_set.h"

#include "facts/facts_file.h"

namespace declarium::cli {

// The facts beside a library. Throws CommandFailed when there are none or they cannot be read.
[[nodiscard]] FactsFile OpenFacts(const std::filesystem::path& library);

void AddFactsCommand(const CommandSet& set);

}  // namespace declarium::cli
