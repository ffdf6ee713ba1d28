// The values of literals.
#pragma once

#include "vb/expression.h"
#include "vb/token.h"

namespace declarium::vb {

// The value of a number or string token; the reason when the language would refuse it, and for a
// date.
[[nodiscard]] Evaluated LiteralValue(const Token& token);

}  // namespace declarium::vb
