// The commands that collect items for insertion: basket and insert.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddBasketCommands(const CommandSet& set);

}  // namespace declarium::cli
