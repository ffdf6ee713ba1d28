// Telling source of the host language from other files, so that nothing else is overwritten by it.
#pragma once

#include <string_view>

namespace declarium {

// Whether the first line of the text that is not empty begins as a line of a module can: with a
// word of the language that stands outside procedures, a comment or a condition. An empty text is
// source.
[[nodiscard]] bool IsSource(std::u16string_view text);

// Whether the text holds nothing but declarations as this program writes them, with any scope word,
// and what the host's editor adds to them: "Attribute VB_..." and "Option" lines. So nothing is
// lost with it that the library it came from does not have. An empty text is such one.
[[nodiscard]] bool IsWrittenSource(std::u16string_view text);

}  // namespace declarium
