#include "library/find_item_index.h"

#include <algorithm>
#include <cmath>

#include "text/text.h"

namespace declarium {

std::int32_t FindItemIndex(std::u16string_view name, const StringList& names) {
  const auto sought = LowerCase(name);
  const auto compare = [&](std::ptrdiff_t i) {
    return CompareIgnoringCase(names[static_cast<std::size_t>(i)], sought);
  };
  const auto upper = names.UpperBound();
  if (upper < 0) return -1;

  // nearbyint rounds halves to even, as the host language rounds.
  const auto root = std::nearbyint(std::sqrt(static_cast<double>(upper)));
  const auto step = std::max<std::ptrdiff_t>(1, static_cast<std::ptrdiff_t>(root));
  auto high = upper;
  for (std::ptrdiff_t i = 0; i <= upper; i += step) {
    if (compare(i) > 0) {
      high = i;
      break;
    }
  }
  for (auto i = std::max<std::ptrdiff_t>(0, high - step); i <= high; ++i) {
    if (compare(i) == 0) return static_cast<std::int32_t>(i);
  }
  return -1;
}

PositionRange FindSpellings(std::u16string_view name, const StringList& names) {
  const auto found = FindItemIndex(name, names);
  if (found < 0) return {0, 0};
  auto first = static_cast<std::size_t>(found);
  auto last = first + 1;
  while (first > 0 && EqualIgnoringCase(names[first - 1], name)) --first;
  while (last < names.size() && EqualIgnoringCase(names[last], name)) ++last;
  return {first, last};
}

}  // namespace declarium
