// Decisions of the overrides table that decide nothing any more.
#pragma once

#include <string>
#include <vector>

#include "header_model.h"
#include "import_library.h"
#include "overrides.h"

namespace declarium::win32_library {

// The decisions for the metadata where the headers say the same or have no such row, or where the
// metadata has none, and those against both of what neither has; by kind and name with a tab
// between them, in order. The last of the units is the metadata; what the headers say of a
// procedure's arguments is what the import libraries say. Whether a decision for the headers is
// needed is told by comparing the libraries with the metadata.
[[nodiscard]] std::vector<std::string> StaleDecisions(const std::vector<Headers>& units,
                                                      const ImportLibraries& libraries,
                                                      const Overrides& overrides);

}  // namespace declarium::win32_library
