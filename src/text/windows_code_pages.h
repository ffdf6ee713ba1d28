// The single-byte code pages of Windows. Bytes below 0x80 are ASCII in all of them.
#pragma once

#include <array>
#include <string>

namespace declarium {

struct WindowsCodePage {
  int number;
  std::array<char16_t, 128> upper_half;  // U+FFFD where the page has no character
};

inline constexpr WindowsCodePage kWindowsCodePages[] = {
#include "text/windows_code_pages.inc"
};

}  // namespace declarium
