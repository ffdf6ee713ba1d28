// Colour values as settings and forms keep them: 0x00BBGGRR, or 0x80000000 plus the number of a
// system colour, which follows the user's colour scheme.
#pragma once

#include <cstdint>

namespace declarium {

using Colour = std::uint32_t;

inline constexpr Colour kSystemColour = 0x80000000;
inline constexpr Colour kWindowColour = kSystemColour | 5;
inline constexpr Colour kWindowTextColour = kSystemColour | 8;
inline constexpr Colour kButtonFaceColour = kSystemColour | 15;
inline constexpr Colour kGrayTextColour = kSystemColour | 17;
inline constexpr Colour kButtonTextColour = kSystemColour | 18;
inline constexpr Colour kHighlightColour = kSystemColour | 13;
inline constexpr Colour kBlack = 0x000000;
inline constexpr Colour kWhite = 0xFFFFFF;

[[nodiscard]] constexpr bool IsSystemColour(Colour colour) {
  return (colour & kSystemColour) != 0;
}

// A colour for text on `background`, the window colour of the user's scheme: on white each is good
// as it is; elsewhere one that can hardly be read gives way to `fallback`. No system colours here.
[[nodiscard]] Colour ReadableOn(Colour background, Colour text, Colour fallback);

}  // namespace declarium
