// A surface that the form paints itself: splitter bars, colour swatches, the splash picture.
#pragma once

#include "toolkit/canvas.h"
#include "toolkit/colour.h"
#include "toolkit/control.h"

namespace declarium {

class PictureBox : public Control {
 public:
  // Setting it clears the surface to the colour and has it painted again.
  [[nodiscard]] virtual Colour BackColour() const = 0;
  virtual void SetBackColour(Colour colour) = 0;

  // Has the surface painted again: cleared to the back colour, then on_paint. It happens at the
  // next Refresh() or when pending events are processed.
  virtual void Invalidate() = 0;

  // Puts a press of the left button at (0, 0) into the queue of pending events.
  virtual void PostMouseDown() = 0;

  Event<Canvas&> on_paint;

 protected:
  using Control::Control;
};

}  // namespace declarium
