// Where code puts an address into a Long, which holds half of it in 64 bits.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "vb/token.h"

namespace declarium {

struct AddressInLong {
  vb::Place place;  // of the variable
  std::u16string_view variable;
  std::u16string_view function;
  std::u16string_view statement;
};

// The assignments in the module `text` of VarPtr, StrPtr, ObjPtr, AddressOf, and of what one of
// `functions` (in lower case) returns, to a variable, parameter or result that is declared as Long
// in the same module. In the order of the source.
[[nodiscard]] std::vector<AddressInLong> AddressesInLongs(
    std::u16string_view text, const std::set<std::u16string>& functions);

}  // namespace declarium
