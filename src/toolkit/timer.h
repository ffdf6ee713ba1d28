// A form's timer: raises on_timer each time its interval has passed, while it is enabled and its
// form is loaded. Timers run only while events are processed.
#pragma once

#include "toolkit/control.h"

namespace declarium {

class Timer : public Component {
 public:
  [[nodiscard]] virtual bool Enabled() const = 0;
  // Enabling starts a whole interval; so does a new interval while enabled.
  virtual void SetEnabled(bool enabled) = 0;
  // Milliseconds; 0 never fires.
  [[nodiscard]] virtual int Interval() const = 0;
  virtual void SetInterval(int milliseconds) = 0;

  Event<> on_timer;

 protected:
  using Component::Component;
};

}  // namespace declarium
