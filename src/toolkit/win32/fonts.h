// The fonts of a screen's resolution.
#pragma once

#include <array>

#include "toolkit/canvas.h"
#include "toolkit/win32/unique_handle.h"

namespace declarium::win32 {

inline constexpr const wchar_t* kCodeFace = L"Consolas";
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

// The fixed-pitch face that this machine has: Consolas, else Courier New.
[[nodiscard]] const wchar_t* FindCodeFace();

}  // namespace declarium::win32
