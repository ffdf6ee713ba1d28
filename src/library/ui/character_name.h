// How messages name a character that no library can keep.
#pragma once

#include <string>
#include <string_view>

namespace declarium {

// "znak s kódom 0" for a control character, otherwise the character with its number:
// "znak → (U+2192)".
[[nodiscard]] std::u16string CharacterName(std::u16string_view character);

}  // namespace declarium
