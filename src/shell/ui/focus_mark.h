// What shows that a picture box has the keyboard focus.
#pragma once

#include "toolkit/canvas.h"

namespace declarium {

// Inverts every second pixel along the surface's edge, so that the mark shows on any color.
void DrawFocusMark(Canvas& canvas);

}  // namespace declarium
