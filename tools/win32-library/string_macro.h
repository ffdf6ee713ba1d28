// Macros that stand for texts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "header_model.h"

namespace declarium::win32_library {

// What another macro stands for; null when there is no such macro.
using MacroLookup = std::function<const std::vector<Token>*(const std::string& name)>;

// The text of a macro that is one string literal or several in a row, wide or not, also in
// brackets, in TEXT(...) and through other such macros. Nothing when it is anything else, or when
// the text holds a character outside printable ASCII.
[[nodiscard]] std::optional<std::string> StringOf(const std::vector<Token>& tokens,
                                                  const MacroLookup& macros);

// Whether the macro is made of string literals, whatever they hold.
[[nodiscard]] bool HoldsStringLiteral(const std::vector<Token>& tokens);

}  // namespace declarium::win32_library
