#include "toolkit/color.h"

#include <algorithm>
#include <cmath>

namespace declarium {

namespace {

double LinearPart(Color color, int shift) {
  const double part = (color >> shift & 0xFF) / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// Relative luminance, 0 to 1.
double Luminance(Color color) {
  return 0.2126 * LinearPart(color, 0) + 0.7152 * LinearPart(color, 8) +
         0.0722 * LinearPart(color, 16);
}

// From 1, the same brightness, to 21, black and white.
double Contrast(Color a, Color b) {
  const auto [darker, brighter] = std::minmax({Luminance(a), Luminance(b)});
  return (brighter + 0.05) / (darker + 0.05);
}

}  // namespace

Color ReadableOn(Color background, Color text, Color fallback) {
  constexpr double kReadable = 3.0;
  return background == kWhite || Contrast(background, text) >= kReadable ? text : fallback;
}

}  // namespace declarium
