// A splitter bar of the main window under the mouse and the keyboard.
//
// Mouse: while dragged with the left button the bar is black and follows the pointer within its
// limits; letting it go sets the pane size. Escape puts it back, a double click changes nothing.
// Keyboard: with the focus, which shows as a dotted frame, the arrow keys of its direction move it
// by kKeyStep; Enter or leaving it sets the pane size, Escape puts it back. A drag that loses the
// focus is given up.
#pragma once

#include <functional>

#include "shell/splitter_bars.h"
#include "toolkit/form.h"
#include "toolkit/picture_box.h"

namespace declarium {

class Splitter {
 public:
  static constexpr int kKeyStep = 8;

  // Takes the events of the form's picture box of the bar's name. `panes` is written when the bar
  // is let go, then `resize` is called, which lays the form out. All must outlive the splitter; the
  // splitter must live as long as events can come.
  Splitter(const SplitterBar& bar, Form& form, PaneSizes& panes, std::function<void()> resize);
  Splitter(const Splitter&) = delete;
  Splitter& operator=(const Splitter&) = delete;

 private:
  void MouseDown(const MouseEvent& event);
  void MouseMove(const MouseEvent& event);
  void MouseUp(const MouseEvent& event);
  void KeyPressed(KeyDown& event);
  void DoubleClick();
  void LostFocus();
  void Paint(Canvas& canvas) const;

  void MoveByKey(int distance);
  // Applies what the arrow keys did, if anything.
  void EndKeyMove();
  void BeginMove();
  void Apply();
  void Cancel();

  [[nodiscard]] int CursorCoordinate() const;
  [[nodiscard]] int ArrowDistance(int key_code) const;
  [[nodiscard]] int Position() const;
  void SetPosition(int position);
  [[nodiscard]] Size Area() const;

  const SplitterBar& bar_;
  Form& form_;
  PictureBox& box_;
  PaneSizes& panes_;
  std::function<void()> resize_;
  bool dragging_ = false;
  bool cancelled_ = false;  // letting go changes nothing
  bool moved_by_key_ = false;
  int cursor_at_press_ = 0;
};

}  // namespace declarium
