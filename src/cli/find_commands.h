// The finders: find, complete and search.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddFindCommands(const CommandSet& set);

}  // namespace declarium::cli
