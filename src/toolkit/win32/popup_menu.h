// The popup menu of a form, at the control whose menu the keyboard asked for or at the pointer.
#pragma once

#include "toolkit/control.h"
#include "win32/system.h"

namespace declarium::win32 {

class Win32Form;
class Win32MenuItem;

class PopupMenu {
 public:
  // The keyboard asked for the control's menu: raises its event, which may show one.
  void AskedForAt(Control& control);
  // Shows what `item` opens, waits, and clicks the chosen entry.
  void Show(const Win32Form& form, const Win32MenuItem& item);
  [[nodiscard]] bool IsOpen() const { return open_; }

 private:
  // In physical pixels of the screen.
  [[nodiscard]] POINT Place(int dpi) const;

  bool open_ = false;
  const Control* at_ = nullptr;  // where the keyboard asked for it
};

}  // namespace declarium::win32
