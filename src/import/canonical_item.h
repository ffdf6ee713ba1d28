// Item strings made from what a declaration means, where the literal rules would store something
// else: single blanks, the words of the language in their own case, comments as the literal rules
// keep them.
#pragma once

#include <string>
#include <string_view>

#include "vb/declaration.h"

namespace declarium {

// A piece of source on one line: single blanks between words and around operators.
[[nodiscard]] std::u16string CanonicalText(std::u16string_view source);

// `comment` is what stands behind the declaration, empty for none.
[[nodiscard]] std::u16string CanonicalConst(const vb::Constant& constant,
                                            std::u16string_view comment);
// PtrSafe is not kept. A type that only the module's Def lines say is written out.
[[nodiscard]] std::u16string CanonicalDeclare(const vb::External& external,
                                              std::u16string_view comment);
// `record` must be a Type; lines that are no members, as #If, are kept as they are.
[[nodiscard]] std::u16string CanonicalType(const vb::Declaration& record);

// The comment as the literal rules keep it: on one line, without blanks behind its apostrophe.
[[nodiscard]] std::u16string CanonicalComment(std::u16string_view comment);

}  // namespace declarium
