#include "check/finding.h"

#include <algorithm>

namespace declarium::check {

std::u16string MendedLines(std::u16string_view text, const std::vector<Edit>& edits) {
  if (edits.empty()) return {};
  const auto before = text.substr(0, edits.front().offset).find_last_of(u"\r\n");
  const auto start = before == text.npos ? 0 : before + 1;
  const auto last = edits.back().offset + edits.back().length;
  const auto end = std::min(text.find_first_of(u"\r\n", last), text.size());
  return Edited(text.substr(start, end - start), edits, start);
}

}  // namespace declarium::check
