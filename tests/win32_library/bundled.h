// The bundled libraries: data/Win32.api and those by area beside it.
#pragma once

#include <string>
#include <vector>

#include "library/library.h"

namespace declarium::win32_library_test {

// Their names without ".api", in order; the first is "Win32".
[[nodiscard]] std::vector<std::string> LibraryNames();

// The path of a library's file.
[[nodiscard]] std::string LibraryPath(const std::string& name);

// The rows of all of them, each once, without a title. Throws std::bad_expected_access when a file
// cannot be read.
[[nodiscard]] Library AllLibraries();

}  // namespace declarium::win32_library_test
