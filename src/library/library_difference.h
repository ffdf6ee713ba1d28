// What differs between two libraries.
#pragma once

#include <cstddef>

#include "library/library.h"

namespace declarium {

struct LibraryDifference {
  std::size_t added = 0;    // items whose name only the second library has
  std::size_t removed = 0;  // items whose name only the first library has
  std::size_t changed = 0;  // items that both have, and that differ
  bool operator==(const LibraryDifference&) const = default;
};

// Compares item by item, by kind and exact name; the titles do not count.
[[nodiscard]] LibraryDifference DifferenceBetween(const Library& first, const Library& second);

}  // namespace declarium
