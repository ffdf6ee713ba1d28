// The three colors of the code display, shared by the display, the settings and the color dialog.
// Each is 0x00BBGGRR.
#pragma once

#include <cstdint>

namespace declarium {

struct DisplayColors {
  std::uint32_t keyword = 0xFF0000;  // blue
  std::uint32_t comment = 0x008000;  // green
  std::uint32_t normal = 0x000000;
  bool operator==(const DisplayColors&) const = default;
};

}  // namespace declarium
