// The command check: findings about declarations.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddCheckCommand(const CommandSet& set);

}  // namespace declarium::cli
