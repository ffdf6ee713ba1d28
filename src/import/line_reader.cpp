#include "import/line_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "basic/code_page.h"
#include "basic/text.h"

namespace declarium {
namespace {

constexpr std::u16string_view kContinuation = u"_\r\n";

void UseCrLf(std::u16string& text) {
  if (text.find(kCrLf) != text.npos || text.find_first_of(kCrLf) == text.npos) return;
  std::u16string with_cr_lf;
  with_cr_lf.reserve(text.size() + text.size() / 16);
  for (const char16_t unit : text) {
    if (unit == u'\r' || unit == u'\n') {
      with_cr_lf += kCrLf;
    } else {
      with_cr_lf += unit;
    }
  }
  text = std::move(with_cr_lf);
}

// Sort keys with their first units in front, so that most comparisons touch no text.
class SortEntry {
 public:
  explicit SortEntry(std::u16string_view text) : text_(text) {
    for (std::size_t i = 0; i < kFirstUnits; ++i) {
      auto& word = first_[i / kUnitsPerWord];
      word = word << 16 | (i < text.size() ? text[i] : 0);
    }
  }

  [[nodiscard]] std::u16string_view text() const { return text_; }

  friend bool operator<(const SortEntry& a, const SortEntry& b) {
    if (a.first_ != b.first_) return a.first_ < b.first_;
    return CompareOrdinal(a.text_, b.text_) < 0;
  }

 private:
  static constexpr std::size_t kUnitsPerWord = 4;
  static constexpr std::size_t kFirstUnits = 16;
  std::array<std::uint64_t, kFirstUnits / kUnitsPerWord> first_{};
  std::u16string_view text_;
};

}  // namespace

std::size_t SourceText::JoinsUpTo(std::size_t position) const {
  return static_cast<std::size_t>(std::ranges::upper_bound(joins, position) - joins.begin());
}

SourceText ReadSource(std::string_view bytes) {
  return ReadSource(DecodeCodePage(bytes));
}

SourceText ReadSource(std::u16string text) {
  UseCrLf(text);
  return {std::move(text), {}};
}

void JoinContinuedLines(SourceText& source) {
  auto& text = source.text;
  auto found = text.find(kContinuation);
  if (found == text.npos) return;

  std::vector<std::size_t> joins;
  auto earlier = source.joins.begin();
  std::size_t write = found;
  std::size_t read = found;
  std::size_t removed = 0;
  while (found != text.npos) {
    // Joins made before keep their place in the text that now moves forward; one inside the line
    // end that goes, which it brought together, moves to where that stood.
    for (; earlier != source.joins.end() && *earlier < found + kContinuation.size(); ++earlier) {
      joins.push_back(std::min(*earlier, found) - removed);
    }
    std::copy(text.begin() + static_cast<std::ptrdiff_t>(read),
              text.begin() + static_cast<std::ptrdiff_t>(found),
              text.begin() + static_cast<std::ptrdiff_t>(write));
    write += found - read;
    joins.push_back(write);
    read = found + kContinuation.size();
    removed += kContinuation.size();
    found = text.find(kContinuation, read);
  }
  for (; earlier != source.joins.end(); ++earlier) joins.push_back(*earlier - removed);
  text.erase(write, read - write);
  source.joins = std::move(joins);
}

std::u16string NormalizeLine(std::u16string_view line) {
  std::u16string result(line);
  std::ranges::replace(result, u'\t', u' ');
  result.erase(0, result.find_first_not_of(u' '));

  const auto apostrophe = result.find(u'\'');
  if (apostrophe == result.npos) return result;
  const auto comment = result.find_first_not_of(u' ', apostrophe + 1);
  result.erase(apostrophe + 1, std::min(comment, result.size()) - apostrophe - 1);
  while (result.find(u"  ") < apostrophe) result = Replace(result, u"  ", u" ");
  return result;
}

std::u16string_view RestAfterBlank(std::u16string_view line, int n) {
  std::size_t behind = 0;  // 1-based position of the blank found last, 0 for none
  for (int round = 0; round < n; ++round) {
    const auto blank = line.find(u' ', behind);
    behind = blank == line.npos ? 0 : blank + 1;
  }
  return behind == 0 ? std::u16string_view() : line.substr(behind);
}

void SortStrings(std::span<std::u16string_view> texts) {
  std::vector<SortEntry> entries(texts.begin(), texts.end());
  std::ranges::stable_sort(entries, std::less<>());
  std::ranges::transform(entries, texts.begin(), &SortEntry::text);
}

}  // namespace declarium
