// missing: what modules use and nothing declares.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddMissingCommand(const CommandSet& set);

}  // namespace declarium::cli
