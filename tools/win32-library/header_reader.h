// Reads the mingw-w64 headers through the compiler, for the ANSI entries.
#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// The C source that includes a unit's headers: what both the reader and the checks compile.
struct HeaderUnit {
  std::string name;
  std::string source;
};

// Reads the declared list of headers: "[name]" begins a unit, "define NAME VALUE" and "include
// HEADER" are its lines, "#" begins a comment. The reason in words on failure.
[[nodiscard]] std::expected<std::vector<HeaderUnit>, std::string> ReadHeaderUnits(
    const std::string& path);

// The unit of the project's own additions: a C source whose declarations stand in the file
// "additions". The reason in words when the file cannot be read.
[[nodiscard]] std::expected<HeaderUnit, std::string> ReadAdditions(const std::string& path);

inline constexpr std::string_view kAdditions = "additions";

// Everything that the unit's headers declare outside the C run-time's own headers. Constants carry
// the compiler's value, in 64 bits none: they are the same. Fails when the headers do not compile
// without an error.
[[nodiscard]] std::expected<Headers, std::string> ReadHeaders(const HeaderUnit& unit,
                                                              Platform platform);

}  // namespace declarium::win32_library
