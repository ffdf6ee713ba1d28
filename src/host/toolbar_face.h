// The picture on the toolbar button and the menu entry, in the form in which a command bar takes
// it from the clipboard.
#pragma once

#include <cstdint>
#include <vector>

namespace declarium {

inline constexpr int kFaceSize = 16;  // pixels, both ways

// A packed device-independent bitmap: header, 16 colors in the standard order, rows from the
// bottom up, 4 bits a pixel. Command bars take no other depth reliably.
[[nodiscard]] std::vector<std::uint8_t> ToolbarFace();

// The mask that belongs to it: 1 bit a pixel, white where the face is transparent.
[[nodiscard]] std::vector<std::uint8_t> ToolbarFaceMask();

}  // namespace declarium
