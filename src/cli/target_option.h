// --target: for whom a command writes declarations.
#pragma once

#include <optional>

#include "cli/command_set.h"

#include "vb/audience.h"

namespace declarium::cli {

inline constexpr const char* kTargetToWrite =
    "For whom declarations are written: vb6, vba7 (with the form of VB6 under #Else), vba7-only or "
    "twinbasic";

// --target; left out, `target` stays.
CLI::Option* DefineTarget(CLI::App& command, vb::Audience& target,
                          const char* description = kTargetToWrite);
CLI::Option* DefineTarget(CLI::App& command, std::optional<vb::Audience>& target);

}  // namespace declarium::cli
