// The items that a list file names, found in libraries, and all that they need.
#pragma once

#include <span>
#include <vector>

#include "basket/basket.h"
#include "basket/list_file.h"
#include "library/library.h"

namespace declarium {

struct LineFault {
  enum class Kind {
    kUnknown,           // no library has such a name, or a name that fits
    kSeveralSpellings,  // no item is spelled so, and several are in other letters
    kTakesNothing,      // the lines above gave no such item
  };
  Kind kind;
  const ListLine* line;              // of the list
  const Library* library = nullptr;  // kSeveralSpellings: the one that has them
};

struct ListSelection {
  std::vector<ItemView> items;  // in the order of the lines, each kind and name once
  std::vector<LineFault> faults;
};

using Libraries = std::span<const Library* const>;

// What the lines of the list name in the libraries, of which the first that has a name counts. The
// result refers into the list and the libraries.
[[nodiscard]] ListSelection SelectItems(const ListFile& list, Libraries libraries);

// Something that an item needs and no library has.
struct MissingNeed {
  Kind kind;
  std::u16string name;
  std::u16string user;  // name of the item that refers to it
};

// Adds the items with everything that they need, and that these need, from the first library that
// has it. Returns what none has, each name once; types of the language are none.
std::vector<MissingNeed> AddWithNeeds(Basket& basket, std::span<const ItemView> items,
                                      Libraries libraries);

}  // namespace declarium
