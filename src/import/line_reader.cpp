#include "import/line_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/code_page.h"
#include "text/scan.h"
#include "text/text.h"

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

// A text's position and its first units, which decide most comparisons without looking for it.
struct SortEntry {
  // Units from 0xFF on count alike here, so nothing is kept behind the first of them; a missing
  // unit counts as 0. What is equal here is decided by the whole texts.
  static constexpr std::size_t kUnitsPerWord = 8;
  static constexpr std::size_t kWords = 3;

  SortEntry(std::u16string_view text, std::size_t place) : position(place) {
    bool kept = true;
    for (std::size_t i = 0; i < kWords * kUnitsPerWord; ++i) {
      kept = kept && i < text.size();
      auto& word = first[i / kUnitsPerWord];
      word = word << 8 | (kept ? std::min<char16_t>(text[i], 0xFF) : 0);
      kept = kept && text[i] < 0xFF;
    }
  }

  std::array<std::uint64_t, kWords> first{};
  std::size_t position;
};

std::size_t FindDoubleBlank(std::u16string_view text, std::size_t from) {
  for (;; ++from) {
    from = FindUnit(text, u' ', from);
    if (from == text.npos || (from + 1 < text.size() && text[from + 1] == u' ')) return from;
  }
}

// Folds every double blank from `start` on into one blank, each blank once: four become two.
void HalveBlanks(std::u16string& text, std::size_t start) {
  auto out = start;
  for (auto in = start; in < text.size(); ++in) {
    text[out++] = text[in];
    if (text[in] == u' ' && in + 1 < text.size() && text[in + 1] == u' ') ++in;
  }
  text.resize(out);
}

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
  std::u16string result(line.substr(std::min(line.find_first_not_of(u" \t"), line.size())));
  std::ranges::replace(result, u'\t', u' ');
  NormalizeComment(result);
  return result;
}

void NormalizeComment(std::u16string& line, std::size_t start) {
  const auto apostrophe = FindUnit(line, u'\'', start);
  if (apostrophe == line.npos) return;
  const auto comment = line.find_first_not_of(u' ', apostrophe + 1);
  line.erase(apostrophe + 1, std::min(comment, line.size()) - apostrophe - 1);
  while (FindDoubleBlank(line, start) < apostrophe) HalveBlanks(line, start);
}

std::u16string_view RestAfterBlank(std::u16string_view line, int n) {
  std::size_t behind = 0;  // 1-based position of the blank found last, 0 for none
  for (int round = 0; round < n; ++round) {
    const auto blank = line.find(u' ', behind);
    behind = blank == line.npos ? 0 : blank + 1;
  }
  return behind == 0 ? std::u16string_view() : line.substr(behind);
}

std::vector<std::size_t> SortedPositions(std::span<const std::u16string_view> texts) {
  std::vector<SortEntry> entries;
  entries.reserve(texts.size());
  for (const auto text : texts) entries.emplace_back(text, entries.size());
  std::ranges::stable_sort(entries, [texts](const SortEntry& a, const SortEntry& b) {
    for (std::size_t i = 0; i < SortEntry::kWords; ++i) {
      if (a.first[i] != b.first[i]) return a.first[i] < b.first[i];
    }
    return CompareOrdinal(texts[a.position], texts[b.position]) < 0;
  });
  std::vector<std::size_t> positions(texts.size());
  std::ranges::transform(entries, positions.begin(), &SortEntry::position);
  return positions;
}

}  // namespace declarium
