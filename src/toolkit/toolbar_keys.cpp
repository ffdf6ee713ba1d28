#include "toolkit/toolbar_keys.h"

#include <algorithm>

namespace declarium {

bool ToolbarKeys::IsEnabled(int button) const {
  const std::string_view key = buttons_[static_cast<std::size_t>(button)].key;
  return !key.empty() && toolbar_.ButtonEnabled(key);
}

int ToolbarKeys::From(int button, int step) const {
  for (int tried = 0; tried < Count(); ++tried, button += step) {
    button = (button + Count()) % Count();
    if (IsEnabled(button)) return button;
  }
  return -1;
}

bool ToolbarKeys::Press(int code) {
  const int current = Current();
  switch (code) {
    case key::kLeft:
      current_ = From(current - 1, -1);
      return true;
    case key::kRight:
      current_ = From(current + 1, 1);
      return true;
    case key::kHome:
      current_ = From(0, 1);
      return true;
    case key::kEnd:
      current_ = From(-1, -1);
      return true;
    case key::kSpace:
    case key::kEnter:
      current_ = current;
      if (current < 0) return true;
      toolbar_.on_button_click.Raise(buttons_[static_cast<std::size_t>(current)].key);
      return true;
    default:
      return false;
  }
}

bool ToolbarKeys::PressShortcut(const Shortcut& shortcut) const {
  const auto button = std::ranges::find(buttons_, shortcut, &ToolbarButtonDefinition::shortcut);
  if (button == buttons_.end()) return false;
  if (toolbar_.Visible() && toolbar_.Enabled() && toolbar_.ButtonEnabled(button->key)) {
    toolbar_.on_button_click.Raise(button->key);
  }
  return true;
}

}  // namespace declarium
