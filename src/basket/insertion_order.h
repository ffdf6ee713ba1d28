// The order of a basket's items in a module.
#pragma once

#include "basket/basket.h"
#include "library/grouped_list.h"

namespace declarium {

// The basket's entries with every constant behind those that its value names and every record
// behind those that it holds, as a compiler asks that reads a module from top to bottom. The groups
// stay; where there is a choice the basket's order stays, and items that need each other stand in
// some order. Takes time in proportion to the basket's text, however deep items need each other.
[[nodiscard]] GroupedList InsertionOrder(const Basket& basket);

}  // namespace declarium
