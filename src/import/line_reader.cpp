#include "import/line_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "basic/code_page.h"
#include "basic/scan.h"
#include "basic/text.h"

namespace declarium {
namespace {

template <typename Unit>
std::optional<std::basic_string<Unit>> WithCrLf(std::basic_string_view<Unit> text) {
  constexpr Unit kLineEnd[] = {'\r', '\n', 0};
  if (FindLineEnd(text, 0) != text.npos || text.find_first_of(kLineEnd) == text.npos) return {};
  std::basic_string<Unit> with_cr_lf;
  with_cr_lf.reserve(text.size() + text.size() / 16);
  for (const Unit unit : text) {
    if (unit == '\r' || unit == '\n') {
      with_cr_lf += kLineEnd;
    } else {
      with_cr_lf += unit;
    }
  }
  return with_cr_lf;
}

template <typename Unit>
std::size_t FindLineEndIn(std::basic_string_view<Unit> text, std::size_t from) noexcept {
  for (;; ++from) {
    from = FindUnit(text, Unit{'\r'}, from);
    if (from == text.npos || (from + 1 < text.size() && text[from + 1] == '\n')) return from;
  }
}

// The first "_" with a line end behind it, at or behind `from`.
std::size_t FindContinuation(std::u16string_view text, std::size_t from) {
  for (;; from += kCrLf.size()) {
    from = FindLineEnd(text, from);
    if (from == text.npos || (from > 0 && text[from - 1] == '_')) break;
  }
  return from == text.npos ? from : from - 1;
}

// A text with its first units in front, so that most comparisons need not look for it.
class SortEntry {
 public:
  explicit SortEntry(std::u16string_view text) : text_(text) {
    for (std::size_t i = 0; i < kFirstUnits; ++i) {
      auto& word = first_[i / kUnitsPerWord];
      word = word << 8 | (i < text.size() ? std::min<char16_t>(text[i], 0xFF) : 0);
    }
  }

  [[nodiscard]] std::u16string_view text() const { return text_; }

  friend bool operator<(const SortEntry& a, const SortEntry& b) {
    if (a.first_ != b.first_) return a.first_ < b.first_;
    return CompareOrdinal(a.text_, b.text_) < 0;
  }

 private:
  // Units from 0xFF on count alike here, and so do a missing unit and 0: what is equal so far is
  // decided by the whole texts.
  static constexpr std::size_t kUnitsPerWord = 8;
  static constexpr std::size_t kFirstUnits = 24;
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
  if (auto with_cr_lf = WithCrLf<char16_t>(text)) text = *std::move(with_cr_lf);
  return {std::move(text), {}};
}

std::optional<std::string> CrLfForBareLineEnds(std::string_view bytes) {
  return WithCrLf(bytes);
}

void JoinContinuedLines(SourceText& source) {
  constexpr std::size_t kContinuationSize = 3;
  auto& text = source.text;
  const std::u16string_view old = text;
  auto found = FindContinuation(old, 0);
  if (found == text.npos) return;

  std::vector<std::size_t> joins;
  auto earlier = source.joins.begin();
  std::size_t write = found;
  std::size_t read = found;
  std::size_t removed = 0;
  while (found != text.npos) {
    // Joins made before keep their place in the text that now moves forward; one inside the line
    // end that goes, which it brought together, moves to where that stood.
    for (; earlier != source.joins.end() && *earlier < found + kContinuationSize; ++earlier) {
      joins.push_back(std::min(*earlier, found) - removed);
    }
    std::copy(text.data() + read, text.data() + found, text.data() + write);
    write += found - read;
    joins.push_back(write);
    read = found + kContinuationSize;
    removed += kContinuationSize;
    found = FindContinuation(old, read);
  }
  for (; earlier != source.joins.end(); ++earlier) joins.push_back(*earlier - removed);
  text.erase(write, read - write);
  source.joins = std::move(joins);
}

std::size_t FindLineEnd(std::u16string_view text, std::size_t from) noexcept {
  return FindLineEndIn(text, from);
}

std::size_t FindLineEnd(std::string_view bytes, std::size_t from) noexcept {
  return FindLineEndIn(bytes, from);
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

bool IsNormalized(std::u16string_view line) noexcept {
  return FindUnit(line, u'\'') == line.npos;
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
