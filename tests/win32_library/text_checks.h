// What can be said about the rows from the library alone.
#pragma once

#include "library/library.h"
#include "rows.h"

namespace declarium::win32_library_test {

// Names that are no names of the language, of items, parameters and members; lines that are longer
// than it reads; names that another item of the kind has in any case.
[[nodiscard]] Mismatches CheckNamesAndLines(const Library& library, const Rows& rows);

// Shared items that are not in the library. The language's own types that are no keywords of the
// display (Single, Date, Object) are listed as shared items too and need no row.
[[nodiscard]] Mismatches CheckSharedItems(const Library& library);

}  // namespace declarium::win32_library_test
