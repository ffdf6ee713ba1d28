#include "toolkit/toolkit.h"

#include "toolkit/canvas.h"

namespace declarium {

Canvas::~Canvas() = default;
Toolkit::~Toolkit() = default;

Answer Toolkit::ShowMessage(const Message& message) {
  OpenMessage box;
  return ShowMessage(message, box);
}

}  // namespace declarium
