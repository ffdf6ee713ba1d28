#include "toolkit/headless/picture_box.h"

#include <utility>

namespace declarium::headless {

namespace {

Size ExtentOf(const Rect& bounds) {
  return {bounds.width, bounds.height};
}

}  // namespace

HeadlessPictureBox::HeadlessPictureBox(FocusOwner& owner, const ControlDefinition& definition,
                                       Post post)
    : HeadlessControl(owner, definition),
      back_color_(definition.back_color),
      post_(std::move(post)),
      surface_(ExtentOf(definition.bounds), definition.back_color) {}

void HeadlessPictureBox::SetBackColor(Color color) {
  back_color_ = color;
  Invalidate();
}

void HeadlessPictureBox::PostMouseDown() {
  post_([this] { on_mouse_down.Raise(MouseEvent{.button = MouseButton::kLeft}); });
}

void HeadlessPictureBox::Refresh() {
  HeadlessControl::Refresh();
  PaintIfNeeded();
}

void HeadlessPictureBox::PaintIfNeeded() {
  if (!must_paint_ || !Visible()) return;
  must_paint_ = false;
  PixelCanvas canvas(ExtentOf(Bounds()), back_color_);
  on_paint.Raise(canvas);
  surface_ = std::move(canvas);
}

}  // namespace declarium::headless
