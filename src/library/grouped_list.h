// The order of the grouped lists: the shared-items list and the basket. Positions are 1-based, as
// in the list views that show them; -1 means none.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "library/grouped_entry.h"

namespace declarium {

using GroupedList = std::vector<GroupedEntry>;

// Where `text` belongs among the entries `first` to `last`, by lower-cased text; -1 when one of
// them already has that text. Behind the last when it sorts after them all, `first` when the range
// is empty. The range must lie within the list.
[[nodiscard]] std::int32_t GetAlphabeticInsertion(std::int32_t first, std::int32_t last,
                                                  std::u16string_view text,
                                                  const GroupedList& list);

// The position of the first entry with this icon, or -1.
[[nodiscard]] std::int32_t FindItemByIcon(std::int32_t icon, const GroupedList& list);

// Inserts at a 1-based position from 1 to size + 1.
void InsertEntry(GroupedList& list, std::int32_t position, GroupedEntry entry);

}  // namespace declarium
