#include "host/com/add_in_object.h"

#include <array>
#include <string_view>

namespace declarium::com {
namespace {

// The ids of the entries, for hosts that call by Invoke.
enum EntryId : DISPID {
  kOnConnection = 1,
  kOnDisconnection = 2,
  kOnAddInsUpdate = 3,
  kOnStartupComplete = 4,
  kOnBeginShutdown = 5,
};

struct EntryName {
  std::wstring_view name;
  DISPID id;
};

constexpr std::array<EntryName, 5> kEntryNames = {{{L"OnConnection", kOnConnection},
                                                   {L"OnDisconnection", kOnDisconnection},
                                                   {L"OnAddInsUpdate", kOnAddInsUpdate},
                                                   {L"OnStartupComplete", kOnStartupComplete},
                                                   {L"OnBeginShutdown", kOnBeginShutdown}}};

}  // namespace

ComPtr<IDispatch> ObjectArgument(const DISPPARAMS& parameters, UINT position) {
  if (position >= parameters.cArgs) return {};
  return Variant::Dereferenced(parameters.rgvarg[parameters.cArgs - 1 - position]).ToObject();
}

void* AddInObject::Find(REFIID iid) noexcept {
  const bool has = iid == IID_IUnknown || iid == IID_IDispatch || iid == kIDTExtensibility ||
                   iid == kIDTExtensibility2;
  return has ? static_cast<AddInEntries*>(this) : nullptr;
}

STDMETHODIMP AddInObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                        DISPID* ids) noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (const auto& entry : kEntryNames) {
    if (lstrcmpiW(names[0], entry.name.data()) == 0) ids[0] = entry.id;
  }
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP AddInObject::Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                 VARIANT*, EXCEPINFO*, UINT* wrong_argument) noexcept {
  if (!parameters) return E_POINTER;
  if (!(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;
  switch (entry) {
    case kOnConnection:
      return InvokeOnConnection(*parameters, wrong_argument);
    case kOnDisconnection:
      return OnDisconnection(0, nullptr);
    case kOnAddInsUpdate:
      return OnAddInsUpdate(nullptr);
    case kOnStartupComplete:
      return OnStartupComplete(nullptr);
    case kOnBeginShutdown:
      return OnBeginShutdown(nullptr);
    default:
      return InvokeOther(entry, *parameters);
  }
}

HRESULT AddInObject::InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument) {
  if (parameters.cArgs == 0) return DISP_E_BADPARAMCOUNT;
  const auto application = ObjectArgument(parameters, 0);
  if (application) return OnConnection(application.Get(), 0, nullptr, nullptr);
  if (wrong_argument) *wrong_argument = parameters.cArgs - 1;
  return DISP_E_TYPEMISMATCH;
}

void* AddInFactory::Find(REFIID iid) noexcept {
  const bool has = iid == IID_IUnknown || iid == IID_IClassFactory;
  return has ? static_cast<IClassFactory*>(this) : nullptr;
}

STDMETHODIMP AddInFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  const auto made = Make();
  return made ? made->QueryInterface(iid, object) : E_OUTOFMEMORY;
}

}  // namespace declarium::com
