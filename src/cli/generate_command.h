// The command that makes a module from a list file.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddGenerateCommand(const CommandSet& set);

}  // namespace declarium::cli
