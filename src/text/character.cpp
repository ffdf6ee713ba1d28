#include "text/character.h"

namespace declarium {

std::size_t CountCharacters(std::u16string_view text) noexcept {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); i += CharacterLength(text, i)) ++count;
  return count;
}

std::string CodePointText(std::u16string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::size_t kLeastDigits = 4;
  std::string digits;
  for (auto number = CharacterAt(text, 0); number > 0 || digits.size() < kLeastDigits;
       number /= 16) {
    digits.insert(digits.begin(), kDigits[number % 16]);
  }
  return "U+" + digits;
}

}  // namespace declarium
