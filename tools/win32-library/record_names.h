// The names that records get in the library.
#pragma once

#include <string>

#include "header_model.h"

namespace declarium::win32_library {

// The name of the record in the library; empty when it has none that is legal. A plain
// name goes before all others; POINT is POINTAPI, as the language has a Point of its own; of
// several typedefs the first legal one counts, and the tag only where there is no typedef.
[[nodiscard]] std::string RecordName(const Record& record);

// How C names the record that RecordName names: "RECT", or "struct sockaddr".
[[nodiscard]] std::string HeaderName(const Record& record);

// Whether the record is what a COM interface is to a C program: an address of a table of functions,
// or that table.
[[nodiscard]] bool IsInterface(const Record& record);

// Whether the record only gives a handle its type.
[[nodiscard]] bool IsHandle(const Record& record);

// Whether values of the type are 64-bit whole numbers made of two halves.
[[nodiscard]] bool IsWideInteger(const HeaderType& type);

}  // namespace declarium::win32_library
