// Source text with its keywords and comments marked, for terminals and for programs.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "vb/audience.h"

namespace declarium::cli {

// Like Lines (cli/output.h), with the escape sequences that color keywords and comments.
[[nodiscard]] std::string ColoredLines(std::u16string_view code,
                                       vb::Audience audience = vb::Audience::kVb6);

// One pair of color name and text for each run: [["keyword","Const"],["normal"," A = 5"]].
[[nodiscard]] nlohmann::ordered_json RunsArray(std::u16string_view code,
                                               vb::Audience audience = vb::Audience::kVb6);

}  // namespace declarium::cli
