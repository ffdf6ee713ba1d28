// The commands on single items: show and shared.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddItemCommands(const CommandSet& set);

}  // namespace declarium::cli
