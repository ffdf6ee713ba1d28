// Where the library and Microsoft's metadata say different things, by kind and name with a tab
// between them, as the overrides have them.
#pragma once

#include <set>
#include <string>

#include "import_facts.h"
#include "record_facts.h"
#include "rows.h"
#include "toolchain.h"

namespace declarium::win32_library_test {

using Disagreements = std::set<std::string>;

// Constants with another value. Whole numbers are compared in 32 bits.
[[nodiscard]] Disagreements DifferingConstants(const Rows& rows);

// Procedures with another number of argument bytes, with a result where there is none, or in
// another library. A library that is a set of entries of any file (api-ms-win-...) agrees with
// every file.
[[nodiscard]] Disagreements DifferingDeclares(const Rows& rows, const ByteCounts& counts);

// Records of another size, or with a member of the same name at another place, among those that the
// headers declare and the metadata tells the size of.
[[nodiscard]] Disagreements DifferingRecords(const Rows& rows, const RecordFacts& facts,
                                             const Toolchain& toolchain);

}  // namespace declarium::win32_library_test
