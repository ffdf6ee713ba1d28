#include "toolkit/colour.h"

#include <algorithm>
#include <cmath>

namespace declarium {

namespace {

double LinearPart(Colour colour, int shift) {
  const double part = (colour >> shift & 0xFF) / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// Relative luminance, 0 to 1.
double Luminance(Colour colour) {
  return 0.2126 * LinearPart(colour, 0) + 0.7152 * LinearPart(colour, 8) +
         0.0722 * LinearPart(colour, 16);
}

// From 1, the same brightness, to 21, black and white.
double Contrast(Colour a, Colour b) {
  const auto [darker, brighter] = std::minmax({Luminance(a), Luminance(b)});
  return (brighter + 0.05) / (darker + 0.05);
}

}  // namespace

Colour ReadableOn(Colour background, Colour text, Colour fallback) {
  constexpr double kReadable = 3.0;
  return background == kWhite || Contrast(background, text) >= kReadable ? text : fallback;
}

}  // namespace declarium
