// Following shared items through a library.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "basket/basket.h"
#include "library/grouped_list.h"
#include "library/library.h"

namespace declarium {

// A shared item met on the way.
struct Reference {
  Kind kind;
  std::u16string name;            // as stored when found, otherwise as written where it is used
  std::optional<ItemView> found;  // the library's item of that name
  int level;                      // 1 for the shared items of the item asked for
  std::u16string via;             // stored name of the item that refers to it
};

// The shared items of `start`, then theirs, level by level, each item once (by kind and name,
// without regard to case) and in list order within one item. `start` itself is not listed. The
// views refer into `library`.
[[nodiscard]] std::vector<Reference> FollowSharedItems(const Library& library,
                                                       const ItemView& start);

// The basket's entries with every record behind the records that are its members, as the host
// language asks of the records of one module. Where that leaves a choice, and for all other
// entries, the basket's order stays; records that hold each other stand in some order.
[[nodiscard]] GroupedList WithMembersFirst(const Basket& basket);

}  // namespace declarium
