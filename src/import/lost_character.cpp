#include "import/lost_character.h"

#include <algorithm>
#include <utility>

#include "library/file_format.h"
#include "text/character.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium {
namespace {

void FindInToken(const vb::Token& token, std::vector<UnkeepableCharacter>& found) {
  const auto text = token.text;
  const bool in_comment = token.kind == vb::TokenKind::kComment;
  for (std::size_t i = 0; i < text.size();) {
    const auto length = CharacterLength(text, i);
    const auto position = token.place.offset + i;
    const auto character = text.substr(i, length);
    if (!IsStorable(character)) {
      found.push_back({position, length, Loss::kSeparator});
    } else if (!IsKeepable(character)) {
      found.push_back({position, length, in_comment ? Loss::kInComment : Loss::kForeign});
    }
    i += length;
  }
}

std::size_t CountLineEnds(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_cr_of_cr_lf = text.substr(i).starts_with(kCrLf);
    if (text[i] == u'\n' || (text[i] == u'\r' && !is_cr_of_cr_lf)) ++count;
  }
  return count;
}

}  // namespace

std::vector<UnkeepableCharacter> FindUnkeepableCharacters(std::u16string_view source) {
  std::vector<UnkeepableCharacter> found;
  vb::Tokenizer tokens(source);
  for (auto token = tokens.Next(); token.kind != vb::TokenKind::kEnd; token = tokens.Next()) {
    if (!IsKeepable(token.text)) FindInToken(token, found);
  }
  return found;
}

LostCharacter LostAt(std::u16string_view text, const vb::Place& start, std::size_t offset,
                     std::size_t length) {
  const auto before = text.substr(0, offset);
  const auto line_start = before.find_last_of(u"\r\n") + 1;
  return {start.line + CountLineEnds(before.substr(start.offset)),
          CountCharacters(before.substr(line_start)) + 1,
          std::u16string(text.substr(offset, length))};
}

void ReplaceForeignCharacters(std::u16string& text, std::size_t start) {
  for (auto at = FindOutsideCodePage(text, start); at != text.npos;
       at = FindOutsideCodePage(text, at + 1)) {
    text.replace(at, CharacterLength(text, at), u"?");
  }
}

void OrderByPlace(std::vector<LostCharacter>& characters) {
  const auto place = [](const LostCharacter& lost) { return std::pair(lost.line, lost.column); };
  std::ranges::sort(characters, {}, place);
  const auto repeated = std::ranges::unique(characters, {}, place);
  characters.erase(repeated.begin(), repeated.end());
}

}  // namespace declarium
