#include "toolkit/control.h"

namespace declarium {

Component::~Component() = default;

void Control::SetLeft(int left) {
  Rect bounds = Bounds();
  bounds.left = left;
  SetBounds(bounds);
}

void Control::SetTop(int top) {
  Rect bounds = Bounds();
  bounds.top = top;
  SetBounds(bounds);
}

void Control::SetWidth(int width) {
  Rect bounds = Bounds();
  bounds.width = width;
  SetBounds(bounds);
}

void Control::SetHeight(int height) {
  Rect bounds = Bounds();
  bounds.height = height;
  SetBounds(bounds);
}

}  // namespace declarium
