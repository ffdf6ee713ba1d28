// The facts file beside a library: what is known of its rows that their text does not say. Its form
// stands in docs/facts-format.md.
#pragma once

#include <string>

#include "constant_sets.h"
#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// The whole file. A constant that belongs to a parameter is in it when the library has it.
[[nodiscard]] std::string FactsOf(const Library& library, const Metadata& metadata,
                                  const Prefixes& prefixes);

}  // namespace declarium::win32_library
