// The surface of a picture box while it is painted. Positions are in the picture box.
#pragma once

#include <string_view>

#include "toolkit/color.h"
#include "toolkit/geometry.h"
#include "toolkit/icon.h"

namespace declarium {

enum class FontRole {
  kText,     // the system's message font
  kBold,     // the same, bold
  kHeading,  // the same, twice the size, bold
  kCode,     // fixed pitch
};

enum class Alignment { kLeft, kCentre };

class Canvas {
 public:
  virtual ~Canvas();

  [[nodiscard]] virtual Size Extent() const = 0;
  virtual void Fill(const Rect& area, Color color) = 0;
  // Every bit of every color in the area is inverted, so that it shows on any background.
  virtual void Invert(const Rect& area) = 0;
  // Text in the middle of the area's height, cut off at its edges; CR LF begins a new line.
  virtual void WriteText(const Rect& area, std::u16string_view text, FontRole font, Color color,
                         Alignment alignment) = 0;
  // The picture in the largest size that fits the area, in its middle.
  virtual void DrawPicture(const Rect& area, Icon icon) = 0;
};

}  // namespace declarium
