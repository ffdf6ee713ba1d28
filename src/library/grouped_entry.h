// A row of the basket, of the shared-items list and of the search results.
#pragma once

#include <string>

namespace declarium {

struct GroupedEntry {
  std::u16string text;  // an item's name
  int icon;             // kind code + 1

  friend bool operator==(const GroupedEntry&, const GroupedEntry&) = default;
};

}  // namespace declarium
