// What the host language takes as a name.
#pragma once

#include <string>
#include <string_view>

namespace declarium::vb {

// Whether the word belongs to the language, in any case.
[[nodiscard]] bool IsReservedWord(std::string_view word);
[[nodiscard]] bool IsReservedWord(std::u16string_view word) noexcept;

// Whether the language refuses the word, in any case, as the name of a variable, parameter,
// procedure, constant or type. These are the reserved identifiers of the language's documentation
// without those that programs are known to declare all the same: the names of functions (Date,
// Len), and words that only later versions reserve (LongPtr). Members of records and what stands
// behind "." may have any name.
[[nodiscard]] bool IsRefusedAsName(std::u16string_view word) noexcept;

// A letter, then letters, digits and underscores, at most 255 in all, and no reserved word.
[[nodiscard]] bool IsLegalName(std::string_view name);

// `name` made legal: leading underscores are dropped, a reserved word gets an underscore behind it.
// Empty when nothing legal is left.
[[nodiscard]] std::string LegalName(std::string_view name);

// ASCII lower case; names in headers and libraries hold nothing else.
[[nodiscard]] std::string Lower(std::string_view text);

// The type that a type character is short for; empty for another character.
[[nodiscard]] std::u16string_view TypeOfCharacter(char16_t character);

}  // namespace declarium::vb
