// Parts the rows into libraries: what desktop programs use, and the rest by area.
#pragma once

#include <string>
#include <vector>

#include "areas.h"
#include "constant_sets.h"
#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

struct LibraryPart {
  std::string file;  // without its extension
  std::string title;
  Library library;
};

// The libraries in the order of the list. Each row is in the library where it is at home, and in
// every other one with a row that needs it: constants in expressions and lengths, records of
// parameters and members, and the constants that belong to a parameter or member.
[[nodiscard]] std::vector<LibraryPart> SplitLibrary(const Library& library, const Areas& areas,
                                                    const Metadata& metadata, ConstantSets& sets,
                                                    const Prefixes& prefixes);

}  // namespace declarium::win32_library
