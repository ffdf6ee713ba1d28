// The tooltips of a form's controls. The window of the tooltips hears every message of each control
// that has one, which would hold up the form's first appearance: it is made when the pointer comes.
#pragma once

#include <string>
#include <vector>

#include "win32/system.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

class Widget;

class ToolTips {
 public:
  // The pointer is over `form`, so that a tooltip of these controls may be wanted from now on.
  void PointerArrived(HWND form, const std::vector<Widget*>& widgets);
  // Nothing before the pointer arrived; no text takes the tooltip away.
  void Set(HWND control, const std::u16string& text);
  // Lets go of all controls, which must still have their windows.
  void Reset() { window_.Reset(); }

 private:
  HWND form_ = nullptr;  // since the pointer arrived
  UniqueWindow window_;
};

}  // namespace declarium::win32
