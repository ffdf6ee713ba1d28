#include "import/ui/loss_message.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "library/ui/character_name.h"
#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

std::u16string CountLine(std::u16string_view caption, std::size_t count) {
  if (count == 0) return {};
  return std::u16string(caption) + CountText(count) + u"\r\n";
}

// A line for each of the first characters.
std::u16string Places(std::span<const LostCharacter> characters) {
  constexpr std::size_t kMostPlaces = 5;
  std::u16string text;
  for (const auto& [line, column, character] :
       characters.first(std::min(kMostPlaces, characters.size()))) {
    text.append(kCrLf).append(texts::kLossLine).append(CountText(line));
    text.append(texts::kLossColumn)
        .append(CountText(column))
        .append(u": ")
        .append(CharacterName(character));
  }
  if (characters.size() > kMostPlaces) text.append(kCrLf).append(u"...");
  return text;
}

}  // namespace

void TellLosses(Toolkit& toolkit, const ParsedItems& parsed) {
  std::vector<LostCharacter> characters;
  for (const auto& line : parsed.skipped) {
    if (line.character) characters.push_back(*line.character);
  }
  const auto left_out = characters.size();
  std::ranges::copy(parsed.replaced, std::back_inserter(characters));
  if (characters.empty()) return;
  toolkit.ShowMessage(
      {std::u16string(texts::kLoss).append(kCrLf) + CountLine(texts::kLossLeftOut, left_out) +
           CountLine(texts::kLossReplaced, parsed.replaced.size()) + Places(characters),
       MessageButtons::kOk, MessageIcon::kExclamation});
}

}  // namespace declarium
