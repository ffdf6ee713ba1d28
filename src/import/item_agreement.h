// Whether an item says what a declaration means: the literal rules and the language agree on it.
#pragma once

#include <string_view>

#include "library/kind.h"
#include "vb/declaration.h"

namespace declarium {

// Names in any case and no matter which blanks and comments. False for a declaration whose meaning
// rests on its module (a Def line, Option Base) or has words that the item leaves out (PtrSafe).
[[nodiscard]] bool Says(Kind kind, std::u16string_view name, std::u16string_view item,
                        const vb::Declaration& declaration);

}  // namespace declarium
