// The commands on whole libraries: new, list, export, rename, delete and databases.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddLibraryCommands(const CommandSet& set);

}  // namespace declarium::cli
