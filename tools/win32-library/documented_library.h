// The library that a procedure is documented in.
#pragma once

#include <string>

#include "metadata.h"

namespace declarium::win32_library {

// As a Declare names it. The metadata's, but for those that name a set of entries instead of a file
// (api-ms-win-...), or a file that only some versions of Windows have.
[[nodiscard]] std::string DocumentedLibrary(const MetaFunction& function);

}  // namespace declarium::win32_library
