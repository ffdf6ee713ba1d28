// Which items must stand above an item in a module.
#pragma once

#include <string_view>
#include <vector>

#include "library/kind.h"

namespace declarium {

// The names of items of the same kind that the item's text uses: the constants in the value of a
// Const, the records that are members of a Type; none for a Declare. A compiler that reads a module
// from top to bottom must have met them before. Read as the language reads it and not as the
// shared-items list does: A+B uses A and B, and a(0 To 9) As RECT holds RECT. In the order in which
// they stand, repeated ones too. The views refer into `item`.
[[nodiscard]] std::vector<std::u16string_view> NeededAbove(Kind kind, std::u16string_view item);

}  // namespace declarium
