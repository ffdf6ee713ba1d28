// Source files for the commands, "-" being standard input.
#pragma once

#include <string>

#include "cli/session.h"

#include "library/file_io.h"

namespace declarium::cli {

// How messages and results call the source.
[[nodiscard]] std::string SourceName(const std::string& source);

// Throws CommandFailed for a source that cannot be read.
[[nodiscard]] FileView ViewSource(const std::string& source, const Session& session);

}  // namespace declarium::cli
