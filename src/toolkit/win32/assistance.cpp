#include "toolkit/win32/assistance.h"

#include "toolkit/win32/unique_handle.h"
#include "toolkit/win32/wide.h"

namespace declarium::win32 {

namespace {

struct ServicesTraits {
  using Handle = IAccPropServices*;
  static constexpr Handle kNone = nullptr;
  static void Close(Handle services) { services->Release(); }
};

using Services = UniqueHandle<ServicesTraits>;

constexpr auto kObject = static_cast<DWORD>(OBJID_CLIENT);

// None where the system has none.
Services CreateServices() {
  IAccPropServices* created = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                          IID_IAccPropServices, reinterpret_cast<void**>(&created));
  return Services(SUCCEEDED(result) ? created : nullptr);
}

}  // namespace

void NameForAssistance(HWND window, const std::u16string& name) {
  const Services services = CreateServices();
  if (!services) return;
  services.Get()->SetHwndPropStr(window, kObject, CHILDID_SELF, PROPID_ACC_NAME, Wide(name));
}

void ForgetNameForAssistance(HWND window) {
  const Services services = CreateServices();
  if (services) services.Get()->ClearHwndProps(window, kObject, CHILDID_SELF, &PROPID_ACC_NAME, 1);
}

}  // namespace declarium::win32
