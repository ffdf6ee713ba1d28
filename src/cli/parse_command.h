// The parse command.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddParseCommand(const CommandSet& set);

}  // namespace declarium::cli
