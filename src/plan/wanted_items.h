// What is to be inserted: items, and all levels of what they need.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "library/library.h"

namespace declarium::plan {

struct WantedItem {
  Kind kind = Kind::kConst;
  std::u16string name;
  std::u16string item;  // the item string
  int level = 0;        // 0 for what was asked for, 1 for what that needs
  std::u16string via;   // the name of what needs it; empty for what was asked for
};

// A name that an item needs and no library has.
struct UnknownNeed {
  Kind kind = Kind::kConst;
  std::u16string name;
  std::u16string via;
};

struct WantedItems {
  std::vector<WantedItem> items;  // what was asked for in its order, then level by level
  std::vector<UnknownNeed> unknown;
};

// Each item once, by kind and name without regard to case. What an item needs is read as the
// language reads it: the constants in values, bounds and lengths, the records behind As. It is
// looked for in the libraries in their order.
[[nodiscard]] WantedItems WithNeeds(std::span<const ItemView> asked,
                                    std::span<const Library* const> libraries);

}  // namespace declarium::plan
