// Coloring of source text, as runs of color and text that a display inserts one after another.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vb/audience.h"

namespace declarium {

enum class TextColor { kNormal, kKeyword, kComment };

struct ColorRun {
  TextColor color;
  std::u16string text;

  friend bool operator==(const ColorRun&, const ColorRun&) = default;
};

// The runs of `text`, neighboring runs of one color joined; none for an empty text. Lines end at
// CR LF and start in the normal color; a line is cut into words at single blanks, and one bracket
// or comma at either end of a word is colored by itself. A word inside quotes is never a keyword;
// a word that begins with an apostrophe, inside quotes too, colors the rest of the line and its
// line end as a comment. Blanks and line ends have the color then current. A word that is a lone
// "(" or ")" comes out twice: the display has always shown it so. That, and the blanks that cut
// words, is why it does not stand on vb/token.h: every item ever shown must keep its colors.
// What is written for others than VB6 has more keywords: PtrSafe, LongPtr, LongLong and those of
// conditions.
[[nodiscard]] std::vector<ColorRun> FormatText(std::u16string_view text,
                                               vb::Audience audience = vb::Audience::kVb6);

}  // namespace declarium
