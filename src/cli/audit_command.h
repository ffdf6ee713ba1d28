// The command audit: every declaration of a project and what is to be done about it.
#pragma once

#include "cli/command_set.h"

namespace declarium::cli {

void AddAuditCommand(const CommandSet& set);

}  // namespace declarium::cli
