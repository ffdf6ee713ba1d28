#include "library/ui/character_name.h"

#include "text/character.h"
#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {

std::u16string CharacterName(std::u16string_view character) {
  const auto number = CharacterAt(character, 0);
  std::u16string name(texts::kCharacter);
  if (number < U' ') return name.append(texts::kWithCode) + CountText(number);
  return name.append(character).append(u" (") + FromUtf8(CodePointText(character)) + u")";
}

}  // namespace declarium
