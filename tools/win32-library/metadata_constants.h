// The metadata's constants as C.
#pragma once

#include <set>
#include <string>

#include "metadata.h"

namespace declarium::win32_library {

// C source of the members of all enumerations and of all constants, whole numbers as enumerators.
// Of equal names the first is there, but none of those in `taken` and none to which enumerations
// give different values. Numbers that need 64 bits are there as such.
[[nodiscard]] std::string ConstantsSource(const Metadata& metadata, std::set<std::string> taken);

}  // namespace declarium::win32_library
