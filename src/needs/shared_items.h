// The shared items of an item: the names of the constants (icon 1) and records (icon 3) that its
// text refers to, which must be inserted with it for it to compile. The analysis is textual and one
// level deep: names are neither looked up nor followed. Each list is grouped by icon, in ascending
// order of the lower-cased names, and holds no name twice in a group. It cuts words at blanks, not
// the tokens of vb/token.h: an operator counts only where it is a word, and half a declaration, as
// a library may hold, gives its names too.
#pragma once

#include <string_view>

#include "library/grouped_list.h"
#include "library/kind.h"

namespace declarium {

// Whether the first character is "&", "-" or a digit; false for an empty token.
[[nodiscard]] bool IsNumber(std::u16string_view token);

// `value` is what stands behind "=". Operators are recognized only as separate words, and a
// lone
// "*" is listed like a name.
[[nodiscard]] GroupedList CreateShared_Const(std::u16string_view value);

// `item` is the whole item string. Every word behind "As " that is no keyword is a record.
[[nodiscard]] GroupedList CreateShared_Declare(std::u16string_view item);

// `item` is the whole item string. Lists the records of the members, the constants of fixed-length
// strings and of array bounds. A member array with "To" in its bounds lists no record. A constant
// that sorts behind the first record is placed behind it.
[[nodiscard]] GroupedList CreateShared_Type(std::u16string_view item);

// The shared items of an item of any kind, from its item string.
[[nodiscard]] GroupedList CreateShared(Kind kind, std::u16string_view item);

}  // namespace declarium
