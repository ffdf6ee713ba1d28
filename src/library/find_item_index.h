// Looking an item up by name in a sorted names list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "library/string_list.h"

namespace declarium {

// The 0-based position of `name` in `names`, compared without regard to case, or -1. A jump search
// in steps of the square root of the length, then a scan of one step: it relies on the ascending
// order of the lower-cased names, and in a list out of order it may miss a name that is present.
// Of equal names it gives the first in the range scanned.
[[nodiscard]] std::int32_t FindItemIndex(std::u16string_view name, const StringList& names);

// A range of positions: those from first on and before last.
struct PositionRange {
  std::size_t first;
  std::size_t last;
};

// The positions of all names that equal `name` without regard to case and stand beside the one that
// FindItemIndex gives; an empty range when it gives none.
[[nodiscard]] PositionRange FindSpellings(std::u16string_view name, const StringList& names);

}  // namespace declarium
