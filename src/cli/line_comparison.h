// Where two texts differ, line by line.
#pragma once

#include <string_view>
#include <vector>

#include "target/rewrite.h"

namespace declarium::cli {

// What makes `before` into `now`: the fewest lines, or where the texts have little in common, all
// lines between those that they begin and end with. A line end is part of its line.
[[nodiscard]] std::vector<Replacement> ReplacementsBetween(std::u16string_view before,
                                                           std::u16string_view now);

}  // namespace declarium::cli
