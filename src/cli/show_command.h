// The source text of items: the command show.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddShowCommand(const CommandSet& set);

}  // namespace declarium::cli
