#include "toolkit/win32/accessibility.h"

#include <utility>

#include "win32/wide.h"

namespace declarium::win32 {

namespace {

constexpr auto kObject = static_cast<DWORD>(OBJID_CLIENT);

}  // namespace

IAccPropServices* Accessibility::Services() {
  if (std::exchange(asked_for_, true)) return services_.Get();
  CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                   reinterpret_cast<void**>(services_.Receive()));
  return services_.Get();
}

void Accessibility::Name(HWND window, const std::u16string& name) {
  if (auto* services = Services()) {
    services->SetHwndPropStr(window, kObject, CHILDID_SELF, PROPID_ACC_NAME, Wide(name));
  }
}

void Accessibility::Forget(HWND window) {
  if (auto* services = Services()) {
    services->ClearHwndProps(window, kObject, CHILDID_SELF, &PROPID_ACC_NAME, 1);
  }
}

}  // namespace declarium::win32
