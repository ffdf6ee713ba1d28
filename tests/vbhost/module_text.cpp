#include "vbhost/module_text.h"

#include <algorithm>

#include "text/text.h"

namespace declarium::vbhost {
namespace {

bool TakeWord(std::u16string_view& line, std::u16string_view word) {
  if (!EqualIgnoringCase(line.substr(0, word.size()), word)) return false;
  const auto rest = line.substr(word.size());
  if (!rest.empty() && rest[0] != u' ') return false;
  line = TrimLeft(rest);
  return true;
}

bool StartsProcedure(std::u16string_view line) {
  line = Trim(line);
  if (!TakeWord(line, u"public") && !TakeWord(line, u"private")) TakeWord(line, u"friend");
  TakeWord(line, u"static");
  return TakeWord(line, u"sub") || TakeWord(line, u"function") || TakeWord(line, u"property");
}

bool IsCode(std::u16string_view line) {
  line = Trim(line);
  return !line.empty() && line[0] != u'\'' && !TakeWord(line, u"rem");
}

std::vector<std::u16string> LinesOf(std::u16string_view text) {
  std::vector<std::u16string> lines;
  for (const auto line : Split(text, kCrLf)) lines.emplace_back(line);
  return lines;
}

}  // namespace

void ModuleText::Set(std::u16string_view text) {
  lines_ = LinesOf(text);
}

int ModuleText::CountOfDeclarationLines() const {
  const auto procedure = std::ranges::find_if(lines_, StartsProcedure);
  if (procedure == lines_.end()) return CountOfLines();
  auto end = procedure;
  while (end != lines_.begin() && !IsCode(*std::prev(end))) --end;
  return static_cast<int>(end - lines_.begin());
}

bool ModuleText::HasLines(int first, int count) const noexcept {
  return first >= 1 && count >= 0 && count <= CountOfLines() && first <= CountOfLines() - count + 1;
}

bool ModuleText::Lines(int first, int count, std::u16string& text) const {
  if (!HasLines(first, count)) return false;
  text.clear();
  for (int i = 0; i < count; ++i) {
    if (i > 0) text.append(kCrLf);
    text.append(lines_[static_cast<std::size_t>(first - 1 + i)]);
  }
  return true;
}

bool ModuleText::InsertLines(int line, std::u16string_view text) {
  if (line < 1) return false;
  auto added = LinesOf(text);
  if (added.empty()) added.emplace_back();
  const auto place = std::min(line, CountOfLines() + 1) - 1;
  lines_.insert(lines_.begin() + place, added.begin(), added.end());
  return true;
}

bool ModuleText::DeleteLines(int first, int count) {
  if (!HasLines(first, count)) return false;
  lines_.erase(lines_.begin() + first - 1, lines_.begin() + first - 1 + count);
  return true;
}

std::u16string ModuleText::text() const {
  std::u16string text;
  static_cast<void>(Lines(1, CountOfLines(), text));
  return text;
}

}  // namespace declarium::vbhost
