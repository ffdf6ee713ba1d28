// A toolbar from the keyboard, as every backend does it.
#pragma once

#include <span>

#include "toolkit/form_definition.h"
#include "toolkit/toolbar.h"

namespace declarium {

class ToolbarKeys {
 public:
  // Both must outlive this.
  ToolbarKeys(const Toolbar& toolbar, std::span<const ToolbarButtonDefinition> buttons)
      : toolbar_(toolbar), buttons_(buttons) {}

  // The button that the keyboard has reached, an index of the table; -1 when none is enabled.
  [[nodiscard]] int Current() const { return From(current_, 1); }
  // Does what the key does in a toolbar that has the focus. False when it is none of its keys.
  bool Press(int code);
  // Presses the button of that shortcut, unless it is disabled. False when no button has it.
  [[nodiscard]] bool PressShortcut(const Shortcut& shortcut) const;

 private:
  [[nodiscard]] int Count() const { return static_cast<int>(buttons_.size()); }
  // The first enabled button from `button` on in steps of `step`, around the ends; -1 without one.
  [[nodiscard]] int From(int button, int step) const;
  [[nodiscard]] bool IsEnabled(int button) const;

  const Toolbar& toolbar_;
  std::span<const ToolbarButtonDefinition> buttons_;
  int current_ = 0;
};

}  // namespace declarium
