// A surface that the form paints itself: splitter bars, color swatches, the splash picture.
#pragma once

#include "toolkit/canvas.h"
#include "toolkit/color.h"
#include "toolkit/control.h"

namespace declarium {

class PictureBox : public Control {
 public:
  // Setting it clears the surface to the color and has it painted again.
  [[nodiscard]] virtual Color BackColor() const = 0;
  virtual void SetBackColor(Color color) = 0;

  // Has the surface painted again: cleared to the back color, then on_paint. It happens at the
  // next Refresh() or when pending events are processed.
  virtual void Invalidate() = 0;

  // Puts a press of the left button at (0, 0) into the queue of pending events.
  virtual void PostMouseDown() = 0;

  Event<Canvas&> on_paint;

 protected:
  using Control::Control;
};

}  // namespace declarium
