// Cuts a constant expression into literals, names and operators.
#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "vb/expression.h"

namespace declarium::vb {

struct ExpressionToken {
  enum class Kind { kLiteral, kName, kOperator };
  Kind kind;
  std::string text;  // an operator that is a word is in lower case
  Value value;       // kLiteral
};

// The tokens, with blanks dropped; the reason when something is no token of the language.
[[nodiscard]] std::expected<std::vector<ExpressionToken>, std::string> LexExpression(
    std::string_view text);

}  // namespace declarium::vb
