// The three colours of the code display, shared by the display, the settings and the colour dialog.
// Each is 0x00BBGGRR.
#pragma once

#include <cstdint>

namespace declarium {

struct DisplayColours {
  std::uint32_t keyword = 0xFF0000;  // blue
  std::uint32_t comment = 0x008000;  // green
  std::uint32_t normal = 0x000000;
  bool operator==(const DisplayColours&) const = default;
};

}  // namespace declarium
