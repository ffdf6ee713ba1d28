// The names of a library that a mistyped name may have meant.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "library/library.h"

namespace declarium::cli {

// How many units must be inserted, removed, replaced or swapped with their neighbour to make `a`
// into `b`; anything above `limit` is given as limit + 1.
[[nodiscard]] std::size_t EditDistance(std::u16string_view a, std::u16string_view b,
                                       std::size_t limit);

// At most three items of these kinds whose names are nearest to `name`, compared without regard to
// case, nearest first and otherwise in library order; none that differs in more than a third of the
// name's length. The views refer into `library`.
[[nodiscard]] std::vector<ItemView> NearestNames(const Library& library,
                                                 std::span<const Kind> kinds,
                                                 std::u16string_view name);

}  // namespace declarium::cli
