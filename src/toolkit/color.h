// Color values as settings and forms keep them: 0x00BBGGRR, or 0x80000000 plus the number of a
// system color, which follows the user's color scheme.
#pragma once

#include <cstdint>

namespace declarium {

using Color = std::uint32_t;

inline constexpr Color kSystemColor = 0x80000000;
inline constexpr Color kWindowColor = kSystemColor | 5;
inline constexpr Color kWindowTextColor = kSystemColor | 8;
inline constexpr Color kButtonFaceColor = kSystemColor | 15;
inline constexpr Color kGrayTextColor = kSystemColor | 17;
inline constexpr Color kButtonTextColor = kSystemColor | 18;
inline constexpr Color kHighlightColor = kSystemColor | 13;
inline constexpr Color kBlack = 0x000000;
inline constexpr Color kWhite = 0xFFFFFF;

[[nodiscard]] constexpr bool IsSystemColor(Color color) {
  return (color & kSystemColor) != 0;
}

// A color for text on `background`, the window color of the user's scheme: on white each is good
// as it is; elsewhere one that can hardly be read gives way to `fallback`. No system colors here.
[[nodiscard]] Color ReadableOn(Color background, Color text, Color fallback);

}  // namespace declarium
