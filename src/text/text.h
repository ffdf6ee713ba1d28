// Text as the host language sees it: UTF-16 code units, one position per unit. Positions here are
// 0-based and npos means "none".
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace declarium {

inline constexpr std::u16string_view kCrLf = u"\r\n";

// What stands for text that cannot be decoded.
inline constexpr char16_t kReplacement = u'\uFFFD';

// Lower case, one unit to one unit. A character whose lower-case form is longer than one unit, and
// every half of a surrogate pair, stays as it is, so lengths and positions never change.
[[nodiscard]] char16_t LowerCase(char16_t unit) noexcept;
[[nodiscard]] std::u16string LowerCase(std::u16string_view text);

// Replaces the contents of `out` by the lower-case form of `text`, reusing its storage.
void LowerCaseInto(std::u16string_view text, std::u16string& out);

// Compare the lower-case forms unit by unit, without making them.
[[nodiscard]] bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;
[[nodiscard]] std::strong_ordering CompareIgnoringCase(std::u16string_view a,
                                                       std::u16string_view b) noexcept;

// Ordinal comparison unit by unit; the same order as operator<=> of the views, faster on long
// common beginnings.
[[nodiscard]] std::strong_ordering CompareOrdinal(std::u16string_view a,
                                                  std::u16string_view b) noexcept;

// Trimming removes blanks (U+0020) only: tabs and line ends stay.
[[nodiscard]] std::u16string_view TrimLeft(std::u16string_view text) noexcept;
[[nodiscard]] std::u16string_view TrimRight(std::u16string_view text) noexcept;
[[nodiscard]] std::u16string_view Trim(std::u16string_view text) noexcept;

// The pieces between the separators; neighboring separators give empty pieces, an empty text gives
// no piece at all. The pieces refer into `text`. `separator` must not be empty.
[[nodiscard]] std::vector<std::u16string_view> Split(std::u16string_view text,
                                                     std::u16string_view separator);
[[nodiscard]] std::vector<std::u16string_view> Split(std::u16string_view text, char16_t separator);

// Every non-overlapping occurrence of `from`, found from left to right, replaced by `to`.
[[nodiscard]] std::u16string Replace(std::u16string_view text, std::u16string_view from,
                                     std::u16string_view to);

// `text` without any of the units in `unwanted`.
[[nodiscard]] std::u16string RemoveUnits(std::u16string_view text, std::u16string_view unwanted);

// Folds every run of blanks into one blank.
[[nodiscard]] std::u16string FoldBlanks(std::u16string_view text);

[[nodiscard]] constexpr bool IsDigit(char16_t unit) noexcept {
  return unit >= u'0' && unit <= u'9';
}

// The count in decimal digits.
[[nodiscard]] std::u16string CountText(std::uint64_t count);

// UTF-8 at the edges. Ill-formed input, and a lone surrogate on the way out, becomes U+FFFD.
[[nodiscard]] std::u16string FromUtf8(std::string_view bytes);
[[nodiscard]] std::string ToUtf8(std::u16string_view text);

}  // namespace declarium
