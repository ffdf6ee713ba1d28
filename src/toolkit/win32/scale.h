// From pixels at 96 dpi (DIPs) to the physical pixels of a screen and back.
#pragma once

#include "toolkit/color.h"
#include "toolkit/geometry.h"
#include "win32/system.h"

namespace declarium::win32 {

[[nodiscard]] inline int ToPhysical(int pixels, int dpi) {
  return MulDiv(pixels, dpi, 96);
}
[[nodiscard]] inline int ToPixels(int physical, int dpi) {
  return MulDiv(physical, 96, dpi);
}
// Rounded down, so that what is placed within the result is within the physical pixels too.
[[nodiscard]] inline int ToPixelsInside(int physical, int dpi) {
  return physical * 96 / dpi;
}

// Neighbouring rectangles stay neighbours: edges are scaled, not sizes.
[[nodiscard]] inline RECT ToPhysical(const Rect& r, int dpi) {
  return {ToPhysical(r.left, dpi), ToPhysical(r.top, dpi), ToPhysical(r.left + r.width, dpi),
          ToPhysical(r.top + r.height, dpi)};
}

[[nodiscard]] inline COLORREF ToColorRef(Color color) {
  return IsSystemColor(color) ? GetSysColor(static_cast<int>(color & 0xFF)) : color & 0xFFFFFF;
}

}  // namespace declarium::win32
