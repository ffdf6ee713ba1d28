// Makes the library's rows from all units of headers.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "constant_translator.h"
#include "declare_translator.h"
#include "header_model.h"
#include "import_library.h"
#include "metadata.h"
#include "rows.h"

namespace declarium::win32_library {

// Every row that can be made. Names are unique within a kind without regard to case. No constant
// has the name of a procedure, since a module of VB could not hold both, nor of a record; a record
// may have a procedure's (CHOOSECOLOR, ChooseColor), as the language looks for them in different
// places.
[[nodiscard]] Library BuildLibrary(const std::vector<Headers>& units,
                                   const ImportLibraries& libraries, const Metadata& metadata);

}  // namespace declarium::win32_library
