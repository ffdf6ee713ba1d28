// The basket: the items chosen for insertion, grouped Const, Declare, Type and alphabetical within
// each group, no name twice in a group. It keeps its own copies of the item strings. Positions are
// 1-based.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "library/grouped_list.h"
#include "library/kind.h"
#include "library/library.h"

namespace declarium {

class Basket {
 public:
  [[nodiscard]] const GroupedList& Entries() const noexcept { return entries_; }
  [[nodiscard]] bool Empty() const noexcept { return entries_.empty(); }
  // Every entry string ever added since the basket was last emptied whole; removing single entries
  // or groups leaves it, so an item added again is rendered as it was at first.
  [[nodiscard]] const std::vector<std::u16string>& Record() const noexcept { return record_; }

  // Adds an item; returns its position, or nothing when its group already holds the name (without
  // regard to case), which changes nothing.
  std::optional<std::int32_t> Add(Kind kind, std::u16string_view name, std::u16string_view item);

  // Removes the entry at `position`, which must exist. Returns the position to select then: the
  // entry that moved up, or the new last one; nothing when the basket is empty.
  std::optional<std::int32_t> Remove(std::int32_t position);

  // Removes every entry with this icon.
  void RemoveGroup(std::int32_t icon);

  // Removes every entry and empties the record.
  void RemoveAll();

  // The listed items, in their order, as the record has them; the views refer into it.
  [[nodiscard]] std::vector<ItemView> Items() const;

  // The basket as source text with the scope word in front of every declaration.
  [[nodiscard]] std::u16string Text(std::u16string_view scope) const;

 private:
  GroupedList entries_;
  std::vector<std::u16string> record_;
};

}  // namespace declarium
