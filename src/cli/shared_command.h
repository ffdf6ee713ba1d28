// What an item needs: the command shared.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddSharedCommand(const CommandSet& set);

}  // namespace declarium::cli
