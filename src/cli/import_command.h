// The import command: declarations of source files into a library.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddImportCommand(const CommandSet& set);

}  // namespace declarium::cli
