#include "toolkit/captioned.h"

namespace declarium {

bool CheckBox::SetValue(int value) {
  if (value < 0 || value > 2) return false;
  if (value == Value()) return true;
  ShowValue(value);
  on_click.Raise();
  return true;
}

}  // namespace declarium
