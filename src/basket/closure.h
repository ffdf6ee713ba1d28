// Following shared items through a library.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "facts/facts_file.h"
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

// The same with the constants that by `facts` belong to the parameters and members of `start` and
// of what it refers to, as far as the library has them: they stand behind the shared items of the
// same item.
[[nodiscard]] std::vector<Reference> FollowSharedItems(const Library& library,
                                                       const ItemView& start,
                                                       const FactsFile& facts);

}  // namespace declarium
