#include "host/com/connect.h"

#include <array>
#include <new>
#include <string_view>
#include <utility>

#include "host/com/automation.h"
#include "host/com/process_watch.h"
#include "host/com/vb_host_application.h"

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

class Connect final : public AddInEntries {
 public:
  explicit Connect(ConnectContext& context) : context_(context), hold_(context.process) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT* wrong_argument) override;

  STDMETHODIMP OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) override;
  STDMETHODIMP OnDisconnection(int, SAFEARRAY**) override;
  STDMETHODIMP OnAddInsUpdate(SAFEARRAY**) override { return S_OK; }
  STDMETHODIMP OnStartupComplete(SAFEARRAY**) override { return S_OK; }
  STDMETHODIMP OnBeginShutdown(SAFEARRAY**) override { return S_OK; }

 private:
  ~Connect() { EndConnection(); }
  HRESULT InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument);
  void WatchHost(const ComPtr<IDispatch>& application);
  void HostDied();
  void EndConnection();

  ConnectContext& context_;
  ServerHold hold_;
  ULONG references_ = 1;
  std::weak_ptr<HostConnection> connection_;
  std::unique_ptr<ProcessWatch> watch_;
  bool connecting_ = false;
  bool died_while_connecting_ = false;
};

STDMETHODIMP Connect::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IDispatch && iid != kIDTExtensibility &&
      iid != kIDTExtensibility2) {
    return E_NOINTERFACE;
  }
  *object = static_cast<AddInEntries*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) Connect::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP Connect::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP Connect::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (const auto& entry : kEntryNames) {
    if (lstrcmpiW(names[0], entry.name.data()) == 0) ids[0] = entry.id;
  }
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP Connect::Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                             VARIANT*, EXCEPINFO*, UINT* wrong_argument) {
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
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT Connect::InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument) {
  if (parameters.cArgs == 0) return DISP_E_BADPARAMCOUNT;
  const auto application =
      Variant::Dereferenced(parameters.rgvarg[parameters.cArgs - 1]).ToObject();
  if (application) return OnConnection(application.get(), 0, nullptr, nullptr);
  if (wrong_argument) *wrong_argument = parameters.cArgs - 1;
  return DISP_E_TYPEMISMATCH;
}

STDMETHODIMP Connect::OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) {
  if (!application) return E_INVALIDARG;
  try {
    EndConnection();
    const ComPtr<IDispatch> host(application);
    // Watched from the first call on: the host may die in any of them.
    WatchHost(host);
    connecting_ = true;
    connection_ = context_.sessions.Connect(MakeHostApplication(host)).weak_from_this();
    connecting_ = false;
    if (std::exchange(died_while_connecting_, false)) {
      context_.posted_calls.Post([self = ComPtr<Connect>(this)] { self->HostDied(); });
    }
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

STDMETHODIMP Connect::OnDisconnection(int, SAFEARRAY**) {
  try {
    EndConnection();
    return S_OK;
  } catch (...) {
    return E_FAIL;
  }
}

void Connect::EndConnection() {
  watch_.reset();
  if (const auto connection = connection_.lock()) {
    connection_.reset();
    context_.sessions.Disconnect(*connection);
  }
}

void Connect::WatchHost(const ComPtr<IDispatch>& application) {
  // The watch ends with this object, so the pointer is good whenever it reports.
  watch_ = std::make_unique<ProcessWatch>(
      HostMainWindow(application), [this] { context_.posted_calls.Post([this] { HostDied(); }); });
}

void Connect::HostDied() {
  // A failure of the connection is on the screen; what there is of it can be given up afterwards.
  if (connecting_) {
    died_while_connecting_ = true;
    return;
  }
  const ComPtr<AddInEntries> self(this);
  if (const auto connection = connection_.lock()) {
    connection_.reset();
    context_.sessions.Abandon(*connection);
  }
  // Gives up the references that the dead process held.
  CoDisconnectObject(this, 0);
}

class ConnectFactory final : public IClassFactory {
 public:
  explicit ConnectFactory(ConnectContext& context) : context_(context) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      return MakeConnect(context_)->QueryInterface(iid, object);
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock) {
      context_.process.AddHold();
    } else {
      context_.process.ReleaseHold();
    }
    return S_OK;
  }

 private:
  ~ConnectFactory() = default;
  ConnectContext& context_;
  ULONG references_ = 1;
};

}  // namespace

ComPtr<AddInEntries> MakeConnect(ConnectContext& context) {
  return ComPtr<AddInEntries>::Attach(new Connect(context));
}

ComPtr<IClassFactory> MakeConnectFactory(ConnectContext& context) {
  return ComPtr<IClassFactory>::Attach(new ConnectFactory(context));
}

}  // namespace declarium::com
