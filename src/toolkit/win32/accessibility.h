// Accessible names of controls.
#pragma once

#include <string>

#include "win32/com_ptr.h"
#include "win32/system.h"

namespace declarium::win32 {

// Where the system offers no such service, nothing happens. Lives no longer than its thread's use
// of COM.
class Accessibility {
 public:
  // Gives the window a name that is not shown.
  void Name(HWND window, const std::u16string& name);
  // Takes the name away, which the system would keep beyond the window's end.
  void Forget(HWND window);

 private:
  // Made for the first window, since making it looks into many keys of the registry.
  [[nodiscard]] IAccPropServices* Services();

  ComPtr<IAccPropServices> services_;
  bool asked_for_ = false;
};

}  // namespace declarium::win32
