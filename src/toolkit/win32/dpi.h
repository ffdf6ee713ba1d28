// The functions of the system that know the resolution of a screen. They came with Windows 10 1607;
// before, all screens have the same resolution, and the older functions suffice.
#pragma once

#include "win32/system.h"

namespace declarium::win32 {

class ScreenFunctions {
 public:
  // Those of `library`, which is user32.dll; without them, the older ones.
  explicit ScreenFunctions(HMODULE library);

  // Dots per inch.
  [[nodiscard]] int SystemDpi() const;
  [[nodiscard]] int WindowDpi(HWND window) const;
  // Extends an inner area in physical pixels to the whole window around it.
  void AddBorders(RECT& area, DWORD style, DWORD extended_style, bool has_menu, int dpi) const;
  // The font that the user chose for messages.
  [[nodiscard]] LOGFONTW MessageFont(int dpi) const;

 private:
  UINT(WINAPI* system_dpi_)();
  UINT(WINAPI* window_dpi_)(HWND);
  BOOL(WINAPI* add_borders_)(RECT*, DWORD, BOOL, DWORD, UINT);
  BOOL(WINAPI* read_metrics_)(UINT, UINT, void*, UINT, UINT);
};

// This system's.
[[nodiscard]] const ScreenFunctions& Screens();

}  // namespace declarium::win32
