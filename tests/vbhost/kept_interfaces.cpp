#include "vbhost/kept_interfaces.h"

#include <ocidl.h>

#include "host/com/com_object.h"
#include "win32/com_ptr.h"

namespace declarium::vbhost {
namespace {

// Nobody gets to know it, so it is never called.
class Uncalled final : public com::ComObject<IUnknown> {
 private:
  [[nodiscard]] void* Find(REFIID) noexcept override { return static_cast<IUnknown*>(this); }
};

}  // namespace

void KeepInterfacesInUse() {
  for (const IID& iid : {IID_IDispatch, IID_IConnectionPointContainer, IID_IConnectionPoint}) {
    const auto object = win32::ComPtr<IUnknown>::Attach(new Uncalled);
    win32::ComPtr<IStream> reference;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, reference.Receive()))) continue;
    // A reference of this sort holds its object until it is given back, which never happens.
    CoMarshalInterface(reference.Get(), iid, object.Get(), MSHCTX_LOCAL, nullptr,
                       MSHLFLAGS_TABLESTRONG);
  }
}

}  // namespace declarium::vbhost
