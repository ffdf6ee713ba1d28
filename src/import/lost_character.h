// The characters of a source that no library can keep: 0, 1 and 2, which part a library's file, and
// those that the code page of libraries does not have.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vb/token.h"

namespace declarium {

// What becomes of such a character.
enum class Loss {
  kSeparator,  // 0, 1 or 2: its declaration is left out
  kForeign,    // outside the code page: its declaration is left out
  kInComment,  // outside the code page, in a comment: it becomes "?"
};

// One of them, and where it stands in the source.
struct LostCharacter {
  std::size_t line = 1;    // 1-based, in the file
  std::size_t column = 1;  // 1-based, counts characters
  std::u16string text;     // one unit, or the two of a surrogate pair
};

// The same in a piece of source.
struct UnkeepableCharacter {
  std::size_t position;  // 0-based
  std::size_t length;    // in units: 1 or 2
  Loss loss;
};

// Those of a piece of source, from left to right. Slow beside IsKeepable of library/file_format.h,
// for it reads the language to tell comments from the rest.
[[nodiscard]] std::vector<UnkeepableCharacter> FindUnkeepableCharacters(std::u16string_view source);

// The character of so many units at `offset` (0-based) of a module's text, which does not stand in
// front of `start`.
[[nodiscard]] LostCharacter LostAt(std::u16string_view text, const vb::Place& start,
                                   std::size_t offset, std::size_t length);

// Puts "?" in the place of each character outside the code page from `start` on.
void ReplaceForeignCharacters(std::u16string& text, std::size_t start = 0);

// Puts them in the order of their places, each place once.
void OrderByPlace(std::vector<LostCharacter>& characters);

}  // namespace declarium
