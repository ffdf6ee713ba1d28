#include "window/accessible_name.h"

#include <algorithm>
#include <initguid.h>
#include <oleacc.h>

namespace declarium::window_driver {

std::u16string AccessibleNameOf(HWND window) {
  CoInitialize(nullptr);
  IAccessible* accessible = nullptr;
  AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                             reinterpret_cast<void**>(&accessible));
  std::u16string name;
  if (accessible) {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR text = nullptr;
    if (accessible->get_accName(self, &text) == S_OK && text) {
      name.assign(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
    }
    SysFreeString(text);
    accessible->Release();
  }
  CoUninitialize();
  std::erase(name, u'&');
  return name;
}

}  // namespace declarium::window_driver
