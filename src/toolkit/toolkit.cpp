#include "toolkit/toolkit.h"

#include "toolkit/canvas.h"

namespace declarium {

Canvas::~Canvas() = default;
Toolkit::~Toolkit() = default;

}  // namespace declarium
