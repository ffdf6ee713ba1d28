// A canvas over pixels in memory. Texts and pictures are recorded, not drawn.
#pragma once

#include <string>
#include <vector>

#include "toolkit/canvas.h"

namespace declarium::headless {

struct WrittenText {
  Rect area;
  std::u16string text;
  bool operator==(const WrittenText&) const = default;
};

struct DrawnPicture {
  Rect area;
  Icon icon;
  bool operator==(const DrawnPicture&) const = default;
};

class PixelCanvas : public Canvas {
 public:
  // A surface of one color.
  PixelCanvas(Size extent, Color color);

  [[nodiscard]] Size Extent() const override { return extent_; }
  void Fill(const Rect& area, Color color) override;
  void Invert(const Rect& area) override;
  void WriteText(const Rect& area, std::u16string_view text, FontRole font, Color color,
                 Alignment alignment) override;
  void DrawPicture(const Rect& area, Icon icon) override;

  // `at` must be inside the surface.
  [[nodiscard]] Color PixelAt(Point at) const;
  [[nodiscard]] const std::vector<WrittenText>& Texts() const { return texts_; }
  [[nodiscard]] const std::vector<DrawnPicture>& Pictures() const { return pictures_; }

 private:
  template <class Change>
  void ForEachPixel(const Rect& area, Change change);

  Size extent_;
  std::vector<Color> pixels_;
  std::vector<WrittenText> texts_;
  std::vector<DrawnPicture> pictures_;
};

}  // namespace declarium::headless
