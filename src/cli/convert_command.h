// The command that rewrites declarations in modules for another target.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddConvertCommand(const CommandSet& set);

}  // namespace declarium::cli
