// The libraries that tell a command what is right, and the options that such commands share.
#pragma once

#include <string>
#include <vector>

#include "cli/command_set.h"

#include "check/known_libraries.h"
#include "check/rule.h"

namespace declarium::cli {

// Adds those of `files`, in their order, with the facts beside them; those that come with the
// program when there are none. Throws CommandFailed for a file that is no library.
void LoadKnown(check::KnownLibraries& known, const std::vector<std::string>& files,
               const Session& session);

// --against
void DefineAgainst(CLI::App& command, std::vector<std::string>& against);

// --fail-on; `level` stays without it, which is what `otherwise` says.
void DefineFailOn(CLI::App& command, check::Level& level, const std::string& otherwise);

}  // namespace declarium::cli
