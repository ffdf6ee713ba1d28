// Makes the library's rows from all units of headers.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "constant_translator.h"
#include "declare_translator.h"
#include "header_model.h"
#include "import_library.h"
#include "rows.h"

namespace declarium::win32_library {

// Every row that can be made. Names are unique within a kind without regard to case, and no name is
// in two kinds: a procedure's goes before a record's, a record's before a constant's, since a
// module of VB could not hold both.
[[nodiscard]] Library BuildLibrary(const std::vector<Headers>& units,
                                   const ImportLibraries& libraries);

}  // namespace declarium::win32_library
