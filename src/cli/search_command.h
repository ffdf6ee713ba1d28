// The advanced search as a command.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddSearchCommand(const CommandSet& set);

}  // namespace declarium::cli
