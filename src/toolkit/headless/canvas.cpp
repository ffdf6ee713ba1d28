#include "toolkit/headless/canvas.h"

#include <algorithm>

namespace declarium::headless {

PixelCanvas::PixelCanvas(Size extent, Color color)
    : extent_{std::max(extent.width, 0), std::max(extent.height, 0)},
      pixels_(static_cast<std::size_t>(extent_.width) * static_cast<std::size_t>(extent_.height),
              color) {}

template <class Change>
void PixelCanvas::ForEachPixel(const Rect& area, Change change) {
  const int right = std::min(area.left + area.width, extent_.width);
  const int bottom = std::min(area.top + area.height, extent_.height);
  for (int y = std::max(area.top, 0); y < bottom; ++y) {
    for (int x = std::max(area.left, 0); x < right; ++x) {
      change(pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(extent_.width) +
                     static_cast<std::size_t>(x)]);
    }
  }
}

void PixelCanvas::Fill(const Rect& area, Color color) {
  ForEachPixel(area, [color](Color& pixel) { pixel = color; });
}

void PixelCanvas::Invert(const Rect& area) {
  ForEachPixel(area, [](Color& pixel) { pixel ^= 0xFFFFFF; });
}

void PixelCanvas::WriteText(const Rect& area, std::u16string_view text, FontRole, Color,
                            Alignment) {
  texts_.push_back({area, std::u16string(text)});
}

void PixelCanvas::DrawPicture(const Rect& area, Icon icon) {
  pictures_.push_back({area, icon});
}

Color PixelCanvas::PixelAt(Point at) const {
  return pixels_.at(static_cast<std::size_t>(at.y) * static_cast<std::size_t>(extent_.width) +
                    static_cast<std::size_t>(at.x));
}

}  // namespace declarium::headless
