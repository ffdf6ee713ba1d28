// The program as a function, which tests call in their own process.
#pragma once

#include <span>
#include <string>

#include "cli/streams.h"

namespace declarium::cli {

// Does what the arguments (UTF-8, without the program's name) say and returns the exit status.
// Throws nothing.
[[nodiscard]] int RunCommandLine(std::span<const std::string> arguments, Streams& streams) noexcept;

}  // namespace declarium::cli
