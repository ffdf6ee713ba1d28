#include "toolkit/text_box.h"

#include <algorithm>

namespace declarium {
namespace {

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

bool IsWordUnit(char16_t unit) {
  return unit == u'_' || unit > 127 || (unit >= u'0' && unit <= u'9') ||
         (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

// Where the next word begins: behind the word or the run of signs that `start` stands in, and the
// blanks that follow.
std::size_t NextWord(std::u16string_view text, std::size_t start) {
  std::size_t at = start;
  if (at < text.size() && !IsBlank(text[at])) {
    const bool word = IsWordUnit(text[at]);
    while (at < text.size() && !IsBlank(text[at]) && IsWordUnit(text[at]) == word) ++at;
  }
  while (at < text.size() && IsBlank(text[at])) ++at;
  return at;
}

}  // namespace

void TextBox::SetText(std::u16string_view text) {
  if (Text() == text) return;
  ShowText(text);
  on_change.Raise();
}

bool TextBox::Edits(int key, const Modifiers& modifiers) {
  return key == key::kDelete && modifiers == Modifiers{.control = true};
}

void TextBox::DeleteWord() {
  const int start = SelectionStart();
  if (SelectionLength() == 0) {
    const auto end = NextWord(Text(), static_cast<std::size_t>(start));
    Select(start, static_cast<int>(end) - start);
  }
  TypeOver({});
}

}  // namespace declarium
