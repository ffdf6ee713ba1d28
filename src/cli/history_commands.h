// The commands about kept versions: history and restore.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddHistoryCommands(const CommandSet& set);

}  // namespace declarium::cli
