#include "library/library_difference.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace declarium {
namespace {

using Item = std::pair<std::u16string_view, std::u16string_view>;

// By exact name: the order of a library's own lists leaves names apart only in case as they come.
std::vector<Item> SortedItems(const KindLists& lists) {
  std::vector<Item> items;
  items.reserve(lists.names.size());
  for (std::size_t i = 0; i < lists.names.size(); ++i) {
    items.emplace_back(lists.names[i], lists.ItemAt(i));
  }
  std::ranges::sort(items);
  return items;
}

void AddDifference(const KindLists& first, const KindLists& second, LibraryDifference& difference) {
  const auto before = SortedItems(first);
  const auto after = SortedItems(second);
  auto old = before.begin();
  auto now = after.begin();
  while (old != before.end() || now != after.end()) {
    if (now == after.end() || (old != before.end() && old->first < now->first)) {
      ++difference.removed;
      ++old;
    } else if (old == before.end() || now->first < old->first) {
      ++difference.added;
      ++now;
    } else {
      if (old->second != now->second) ++difference.changed;
      ++old;
      ++now;
    }
  }
}

}  // namespace

LibraryDifference DifferenceBetween(const Library& first, const Library& second) {
  LibraryDifference difference;
  for (const auto kind : kKinds) AddDifference(first[kind], second[kind], difference);
  return difference;
}

}  // namespace declarium
