// The fonts of a screen's resolution.
#pragma once

#include <array>

#include "toolkit/canvas.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

inline constexpr int kCodePoints = 10;

class Fonts {
 public:
  explicit Fonts(int dpi);
  [[nodiscard]] HFONT Get(FontRole role) const {
    return fonts_[static_cast<std::size_t>(role)].Get();
  }

 private:
  std::array<UniqueFont, 4> fonts_;
};

// The first fixed-pitch face of those we like that this machine has; Courier New when it has none.
[[nodiscard]] const wchar_t* FindCodeFace();

}  // namespace declarium::win32
