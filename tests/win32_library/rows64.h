// The rows as the facts beside the libraries say that they are in 64 bits.
#pragma once

#include "rows.h"

namespace declarium::win32_library_test {

// The constants, and every record that has a form in 64 bits. What no facts speak of is left out.
[[nodiscard]] Rows RowsFor64(const Rows& rows);

}  // namespace declarium::win32_library_test
