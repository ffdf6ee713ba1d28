// A row of buttons, each known by its key. A click leaves the focus where it is. In a toolbar at
// which the tab key stops, left and right go from one enabled button to the next, around the ends,
// Home and End to the first and the last; Space and Enter press the button that was reached, which
// is the first one at first.
#pragma once

#include <string_view>

#include "toolkit/control.h"

namespace declarium {

class Toolbar : public Control {
 public:
  // `key` must be one of the table's; an unknown key throws std::logic_error.
  [[nodiscard]] virtual bool ButtonEnabled(std::string_view key) const = 0;
  virtual void SetButtonEnabled(std::string_view key, bool enabled) = 0;

  Event<std::string_view> on_button_click;  // carries the key

 protected:
  using Control::Control;
};

}  // namespace declarium
