#include "library/grouped_list.h"

#include <algorithm>

#include "text/text.h"

namespace declarium {

std::int32_t GetAlphabeticInsertion(std::int32_t first, std::int32_t last, std::u16string_view text,
                                    const GroupedList& list) {
  for (auto i = first; i <= last; ++i) {
    const auto order = CompareIgnoringCase(text, list[static_cast<std::size_t>(i - 1)].text);
    if (order == 0) return -1;
    if (order < 0) return i;
  }
  return first > last ? first : last + 1;
}

std::int32_t FindItemByIcon(std::int32_t icon, const GroupedList& list) {
  const auto found = std::ranges::find(list, icon, &GroupedEntry::icon);
  return found == list.end() ? -1 : static_cast<std::int32_t>(found - list.begin()) + 1;
}

void InsertEntry(GroupedList& list, std::int32_t position, GroupedEntry entry) {
  list.insert(list.begin() + (position - 1), std::move(entry));
}

}  // namespace declarium
