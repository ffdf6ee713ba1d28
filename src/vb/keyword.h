// The fixed list of keywords that the display colors and that the analysers and the search do not
// take for names of types or constants.
#pragma once

#include <string_view>

namespace declarium {

// Whether the whole word, compared without regard to case, is in the list. A word with a tab or a
// bracket in it is none. "Single", "Date" and "Object" are deliberately not in the list.
[[nodiscard]] bool IsKeyword(std::u16string_view word);

// The word as the list writes it ("As", "ByVal"); `word` itself when it is not in the list.
[[nodiscard]] std::u16string_view KeywordAsWritten(std::u16string_view word);

}  // namespace declarium
