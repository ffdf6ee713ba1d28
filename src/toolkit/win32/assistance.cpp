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

}  // namespace

void NameForAssistance(HWND window, const std::u16string& name) {
  IAccPropServices* created = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                          IID_IAccPropServices, reinterpret_cast<void**>(&created));
  if (FAILED(result)) return;
  const UniqueHandle<ServicesTraits> services(created);
  services.Get()->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                 PROPID_ACC_NAME, Wide(name));
}

}  // namespace declarium::win32
