#include "search/quick_find.h"

#include <algorithm>
#include <compare>
#include <string>

#include "text/text.h"
#include "vb/like.h"

namespace declarium {
namespace {

// The order of a row's first lowered.size() characters, lower-cased, to `lowered`.
std::strong_ordering CompareBeginning(std::u16string_view row, std::u16string_view lowered) {
  return CompareIgnoringCase(row.substr(0, lowered.size()), lowered);
}

// Where the row-by-row scan starts.
std::size_t FindBlock(const RowSource& rows, std::size_t step, std::u16string_view lowered) {
  for (std::size_t i = 0; i < rows.count; i += step) {
    if (CompareBeginning(rows.row(i), lowered) > 0) continue;
    const auto next = i + step < rows.count ? rows.row(i + step) : std::u16string_view();
    if (CompareBeginning(next, lowered) >= 0) return i;
  }
  return rows.count - step;
}

}  // namespace

std::vector<std::size_t> FindNames(const StringList& names, std::u16string_view text) {
  const LikePattern pattern(u"*" + LowerCase(text) + u"*");
  std::vector<std::size_t> found;
  std::u16string scratch;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (pattern.MatchesLowerCaseOf(names[i], scratch)) found.push_back(i);
  }
  return found;
}

RowSource RowsOf(const StringList& names) {
  return {names.size(), [&names](std::size_t i) { return names[i]; }};
}

std::optional<std::size_t> TypeAheadRow(const RowSource& rows, std::u16string_view text) {
  if (rows.count == 0) return std::nullopt;
  const auto lowered = LowerCase(text);
  const auto step = std::max<std::size_t>(1, rows.count / 100);
  for (auto row = FindBlock(rows, step, lowered); row < rows.count; ++row) {
    if (CompareBeginning(rows.row(row), lowered) == 0) return row;
  }
  return std::nullopt;
}

}  // namespace declarium
