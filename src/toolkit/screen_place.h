// Where a window may stand: where the user can take hold of it.
#pragma once

#include <span>

#include "toolkit/geometry.h"

namespace declarium {

// `area` itself when enough of its title bar, the uppermost part, lies on one of the work areas to
// be dragged by; otherwise the place next to it that does, no larger than the nearest work area.
// Everything in physical pixels of the screen. Without work areas nothing is changed.
[[nodiscard]] Rect PlaceOnScreen(const Rect& area, std::span<const Rect> work_areas);

}  // namespace declarium
