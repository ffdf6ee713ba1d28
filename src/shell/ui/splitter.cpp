#include "shell/ui/splitter.h"

#include <string>
#include <utility>

#include "shell/ui/focus_mark.h"

namespace declarium {

Splitter::Splitter(const SplitterBar& bar, Form& form, PaneSizes& panes,
                   std::function<void()> resize)
    : bar_(bar),
      form_(form),
      box_(form.Get<PictureBox>(bar.name)),
      panes_(panes),
      resize_(std::move(resize)) {
  box_.on_mouse_down = [this](const MouseEvent& event) { MouseDown(event); };
  box_.on_mouse_move = [this](const MouseEvent& event) { MouseMove(event); };
  box_.on_mouse_up = [this](const MouseEvent& event) { MouseUp(event); };
  box_.on_double_click = [this] { DoubleClick(); };
  box_.on_key_down = [this](KeyDown& event) { KeyPressed(event); };
  box_.on_got_focus = [this] { box_.Invalidate(); };
  box_.on_lost_focus = [this] { LostFocus(); };
  box_.on_paint = [this](Canvas& canvas) { Paint(canvas); };
}

void Splitter::MouseDown(const MouseEvent& event) {
  EndKeyMove();
  cancelled_ = false;
  if (event.button != MouseButton::kLeft) return;
  cursor_at_press_ = CursorCoordinate();
  dragging_ = true;
  BeginMove();
}

void Splitter::MouseMove(const MouseEvent& event) {
  if (box_.Pointer() != bar_.pointer) box_.SetPointer(bar_.pointer);
  if (event.button != MouseButton::kLeft || !dragging_ || cancelled_) return;
  const int distance = CursorCoordinate() - cursor_at_press_;
  SetPosition(WithinLimits(bar_, Area(), panes_, bar_.rest_position(Area(), panes_) + distance));
}

void Splitter::MouseUp(const MouseEvent& event) {
  if (event.button != MouseButton::kLeft) return;
  const bool was_dragging = std::exchange(dragging_, false);
  if (was_dragging && !cancelled_) Apply();
}

// The second press brings no mouse-down, so nothing is dragged when its release comes.
void Splitter::DoubleClick() {
  cancelled_ = true;
}

void Splitter::KeyPressed(KeyDown& event) {
  if (event.code == key::kEscape) {
    Cancel();
  } else if (event.code == key::kEnter) {
    EndKeyMove();
  } else if (const int distance = ArrowDistance(event.code); distance != 0) {
    MoveByKey(distance);
  } else {
    return;
  }
  event.Swallow();
}

void Splitter::LostFocus() {
  EndKeyMove();
  if (dragging_) Cancel();
  box_.Invalidate();
}

// The frame would break the black of a bar on the move.
void Splitter::Paint(Canvas& canvas) const {
  const bool moving = moved_by_key_ || (dragging_ && !cancelled_);
  if (box_.HasFocus() && !moving) DrawFocusMark(canvas);
}

void Splitter::MoveByKey(int distance) {
  if (dragging_) return;
  if (!std::exchange(moved_by_key_, true)) BeginMove();
  SetPosition(WithinLimits(bar_, Area(), panes_, Position() + distance));
}

void Splitter::EndKeyMove() {
  if (std::exchange(moved_by_key_, false)) Apply();
}

void Splitter::BeginMove() {
  box_.SetBackColor(kBlack);
  box_.BringToFront();
}

void Splitter::Apply() {
  box_.SetBackColor(kButtonFaceColor);
  panes_ = bar_.panes_at(Area(), panes_, Position());
  resize_();
}

void Splitter::Cancel() {
  moved_by_key_ = false;
  box_.SetBackColor(kButtonFaceColor);
  SetPosition(bar_.rest_position(Area(), panes_));
  box_.SetPointer(MousePointer::kDefault);
  cancelled_ = true;
}

int Splitter::CursorCoordinate() const {
  const Point cursor = form_.CursorPosition();
  return bar_.movement == BarMovement::kAcross ? cursor.x : cursor.y;
}

int Splitter::ArrowDistance(int key_code) const {
  const bool across = bar_.movement == BarMovement::kAcross;
  if (key_code == (across ? key::kLeft : key::kUp)) return -kKeyStep;
  return key_code == (across ? key::kRight : key::kDown) ? kKeyStep : 0;
}

int Splitter::Position() const {
  const Rect bounds = box_.Bounds();
  return bar_.movement == BarMovement::kAcross ? bounds.left : bounds.top;
}

void Splitter::SetPosition(int position) {
  if (bar_.movement == BarMovement::kAcross) {
    box_.SetLeft(position);
  } else {
    box_.SetTop(position);
  }
}

Size Splitter::Area() const {
  return {form_.ScaleWidth(), form_.ScaleHeight()};
}

}  // namespace declarium
