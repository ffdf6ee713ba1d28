// The facts file beside a library: what is known of its rows that their text does not say. Its form
// stands in docs/facts-format.md.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "constant_sets.h"
#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// The whole file. `sets` may hold more than the library has: a constant that belongs to a parameter
// is in the file when the library has it.
[[nodiscard]] std::string FactsOf(const Library& library, const Metadata& metadata,
                                  ConstantSets& sets, const Prefixes& prefixes);

// The names of the constants of `sets` that belong to the parameters and members of the library's
// rows: those of an enumeration, and those of a list of which the library has none.
[[nodiscard]] std::set<std::string> BelongingConstants(const Library& library,
                                                       const Metadata& metadata, ConstantSets& sets,
                                                       const Prefixes& prefixes);

}  // namespace declarium::win32_library
