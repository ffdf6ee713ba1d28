// Characters of UTF-16 text: a surrogate pair is one, a lone surrogate too.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace declarium {

[[nodiscard]] constexpr bool IsHighSurrogate(char32_t unit) noexcept {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
[[nodiscard]] constexpr bool IsLowSurrogate(char32_t unit) noexcept {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The number of the character that begins at `position` (0-based), which must be inside the text.
[[nodiscard]] constexpr char32_t CharacterAt(std::u16string_view text,
                                             std::size_t position) noexcept {
  const char32_t unit = text[position];
  if (!IsHighSurrogate(unit) || position + 1 == text.size()) return unit;
  const char32_t next = text[position + 1];
  return IsLowSurrogate(next) ? 0x10000 + ((unit - 0xD800) << 10U) + (next - 0xDC00) : unit;
}

// How many units it takes: 1 or 2.
[[nodiscard]] constexpr std::size_t CharacterLength(std::u16string_view text,
                                                    std::size_t position) noexcept {
  return CharacterAt(text, position) > 0xFFFF ? 2 : 1;
}

// How many characters the text has.
[[nodiscard]] std::size_t CountCharacters(std::u16string_view text) noexcept;

// The first character's number as "U+2192".
[[nodiscard]] std::string CodePointText(std::u16string_view text);

}  // namespace declarium
