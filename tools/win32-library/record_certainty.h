// Which records the metadata tells the size of.
#pragma once

#include <set>
#include <string>

#include "metadata.h"

namespace declarium::win32_library {

// The names of the records whose size it does not tell for certain: the metadata makes enumerations
// of what the headers have as numbers of any size, and says 32 bits of each, so that a member of
// such a type may be a byte.
[[nodiscard]] std::set<std::string> UncertainRecords(const Metadata& metadata);

}  // namespace declarium::win32_library
