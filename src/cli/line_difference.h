// The difference between a text and what becomes of it, as patch(1) reads it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "target/rewrite.h"

namespace declarium::cli {

// The lines of a text, each with the CR LF, CR or LF that ends it.
[[nodiscard]] std::vector<std::u16string_view> LinesWithEnds(std::u16string_view text);

// A unified difference with three lines around each change, UTF-8 with line feeds; empty without
// replacements. `name` stands in its head, for the text before and after.
[[nodiscard]] std::string UnifiedDifference(std::string_view name, std::u16string_view text,
                                            std::span<const Replacement> replacements);

}  // namespace declarium::cli
