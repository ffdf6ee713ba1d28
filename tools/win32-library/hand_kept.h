// Procedures that neither source has and programs need, with the source of each.
#pragma once

#include <expected>
#include <string>
#include <vector>

#include "rows.h"

namespace declarium::win32_library {

// What a row of the list has for its header.
inline constexpr const char* kHandKept = "hand-kept";

// Reads a list of Declares, a module of Visual Basic in ASCII. The reason in words when it cannot
// be read or says something else than Declares.
[[nodiscard]] std::expected<std::vector<DeclareRow>, std::string> ReadHandKept(
    const std::string& path);

}  // namespace declarium::win32_library
