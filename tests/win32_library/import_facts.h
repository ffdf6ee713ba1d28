// What the 32-bit import libraries say about procedures, read with the tools of the compiler.
#pragma once

#include <map>
#include <string>

#include "rows.h"
#include "toolchain.h"

namespace declarium::win32_library_test {

// The argument bytes of a procedure, by "library procedure" with the library as a Declare names it.
using ImportFacts = std::map<std::string, long>;

[[nodiscard]] ImportFacts ReadImportLibraries(const Toolchain& toolchain);

// The rows whose library does not have the entry, or whose arguments take up another number of
// bytes, or which are a Function without a result type or a Sub with one.
[[nodiscard]] Mismatches CheckDeclares(const Rows& rows, const ImportFacts& facts);

}  // namespace declarium::win32_library_test
