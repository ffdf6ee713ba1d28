// Rewrites a C constant expression of other constants in the operators of VB.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// Whether the library has a whole-number constant of exactly this name.
using IsConstant = std::function<bool(const std::string& name)>;

// The expression as VB text, when it is made of library constants, whole numbers and the operators
// + - | & ^ ~, and names at least one constant. Casts to whole-number types are dropped, brackets
// stand where VB's precedence needs them. Parts without a name (1 << 3) become their value.
//
// Products, shifts and signs of constants are not rewritten: the list of shared items takes "*" for
// a name and overlooks a name behind a sign.
[[nodiscard]] std::optional<std::string> RewriteExpression(const std::vector<Token>& tokens,
                                                           const IsConstant& is_constant);

// How the number was written: hexadecimal when a literal of the expression is.
enum class Notation { kDecimal, kHexadecimal };
[[nodiscard]] Notation NotationOf(const std::vector<Token>& tokens);

// A 32-bit number as a VB literal of its own value. A hexadecimal one that VB would read as a
// negative 16-bit number gets an "&": &H8000&.
[[nodiscard]] std::string NumberLiteral(std::int32_t value, Notation notation);

}  // namespace declarium::win32_library
