// A row of buttons, each known by its key.
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
