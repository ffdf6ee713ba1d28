#include "text/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/character.h"
#include "text/scan.h"

namespace declarium {
namespace {

struct LowerCaseRange {
  std::uint16_t first;
  std::uint16_t last;
  std::uint16_t step;
  std::int32_t delta;
};

constexpr LowerCaseRange kLowerCaseRanges[] = {
#include "text/lower_case_ranges.inc"
};

constexpr auto kLowerCase = [] {
  std::array<char16_t, 0x10000> table{};
  for (std::uint32_t unit = 0; unit < table.size(); ++unit) {
    table[unit] = static_cast<char16_t>(unit);
  }
  for (const auto& range : kLowerCaseRanges) {
    for (std::uint32_t unit = range.first; unit <= range.last; unit += range.step) {
      table[unit] = static_cast<char16_t>(static_cast<std::int32_t>(unit) + range.delta);
    }
  }
  return table;
}();

void AppendCodePoint(char32_t code, std::u16string& out) {
  if (code < 0x10000) {
    out.push_back(static_cast<char16_t>(code));
  } else {
    out.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
  }
}

void AppendUtf8(char32_t code, std::string& out) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (code >> 18)));
    out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

// Reads one code point at `position` and moves behind it; an ill-formed byte gives U+FFFD and is
// passed over alone.
char32_t NextCodePoint(std::string_view bytes, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(bytes[position++]);
  if (lead < 0x80) return lead;
  const int length = lead >= 0xF0 && lead <= 0xF4   ? 3
                     : lead >= 0xE0 && lead <= 0xEF ? 2
                     : lead >= 0xC2 && lead <= 0xDF ? 1
                                                    : 0;
  if (length == 0 || bytes.size() - position < static_cast<std::size_t>(length)) {
    return kReplacement;
  }
  char32_t code = lead & (0x3F >> length);
  for (int i = 0; i < length; ++i) {
    const auto next = static_cast<unsigned char>(bytes[position + i]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    code = (code << 6) | (next & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
    return kReplacement;
  }
  position += static_cast<std::size_t>(length);
  return code;
}

}  // namespace

char16_t LowerCase(char16_t unit) noexcept {
  return kLowerCase[unit];
}

std::u16string LowerCase(std::u16string_view text) {
  std::u16string lower;
  LowerCaseInto(text, lower);
  return lower;
}

void LowerCaseInto(std::u16string_view text, std::u16string& out) {
  out.resize(text.size());
  LowerCaseInto(text, out.data());
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept {
  return std::ranges::equal(
      a, b, [](char16_t x, char16_t y) { return x == y || kLowerCase[x] == kLowerCase[y]; });
}

std::strong_ordering CompareIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept {
  const auto common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    if (const auto order = kLowerCase[a[i]] <=> kLowerCase[b[i]]; order != 0) return order;
  }
  return a.size() <=> b.size();
}

std::strong_ordering CompareOrdinal(std::u16string_view a, std::u16string_view b) noexcept {
  const auto common = std::min(a.size(), b.size());
  const auto [left, right] = std::mismatch(a.begin(), a.begin() + common, b.begin());
  if (left != a.begin() + common) return *left <=> *right;
  return a.size() <=> b.size();
}

std::u16string_view TrimLeft(std::u16string_view text) noexcept {
  const auto first = text.find_first_not_of(u' ');
  return first == text.npos ? text.substr(text.size()) : text.substr(first);
}

std::u16string_view TrimRight(std::u16string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(u' ') + 1);
}

std::u16string_view Trim(std::u16string_view text) noexcept {
  return TrimLeft(TrimRight(text));
}

std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view separator) {
  std::vector<std::u16string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (;;) {
    const auto end = text.find(separator, start);
    if (end == text.npos) break;
    pieces.push_back(text.substr(start, end - start));
    start = end + separator.size();
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

std::vector<std::u16string_view> Split(std::u16string_view text, char16_t separator) {
  return Split(text, std::u16string_view(&separator, 1));
}

std::u16string Replace(std::u16string_view text, std::u16string_view from, std::u16string_view to) {
  std::u16string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (;;) {
    const auto end = text.find(from, start);
    if (end == text.npos) break;
    result.append(text.substr(start, end - start)).append(to);
    start = end + from.size();
  }
  return result.append(text.substr(start));
}

std::u16string RemoveUnits(std::u16string_view text, std::u16string_view unwanted) {
  std::u16string result(text);
  std::erase_if(result, [&](char16_t unit) { return unwanted.find(unit) != unwanted.npos; });
  return result;
}

std::u16string FoldBlanks(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit != u' ' || result.empty() || result.back() != u' ') result.push_back(unit);
  }
  return result;
}

std::u16string CountText(std::uint64_t count) {
  return FromUtf8(std::to_string(count));
}

std::u16string FromUtf8(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t position = 0; position < bytes.size();) {
    AppendCodePoint(NextCodePoint(bytes, position), text);
  }
  return text;
}

std::string ToUtf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); i += CharacterLength(text, i)) {
    const auto code = CharacterAt(text, i);
    AppendUtf8(IsHighSurrogate(code) || IsLowSurrogate(code) ? kReplacement : code, bytes);
  }
  return bytes;
}

}  // namespace declarium
