// What the 32-bit import libraries and the metadata say about procedures, read with the tools of
// the compiler.
#pragma once

#include <map>
#include <string>

#include "rows.h"
#include "toolchain.h"

namespace declarium::win32_library_test {

// The argument bytes of a procedure, by "library procedure" with the library as a Declare names it.
using ImportFacts = std::map<std::string, long>;

// The argument bytes of the metadata's procedures, by name: the compiler writes its count into the
// symbol of a procedure that clears the stack itself.
using ByteCounts = std::map<std::string, long>;
[[nodiscard]] ByteCounts CountWithTheCompiler(const Toolchain& toolchain);

// What the import libraries say; the metadata where they do not know a procedure or the overrides
// decide against them.
[[nodiscard]] ImportFacts ReadImportLibraries(const Toolchain& toolchain, const ByteCounts& counts);

// The rows whose library does not have the entry, or whose arguments take up another number of
// bytes, or which are a Function without a result type or a Sub with one.
[[nodiscard]] Mismatches CheckDeclares(const Rows& rows, const ImportFacts& facts);

}  // namespace declarium::win32_library_test
