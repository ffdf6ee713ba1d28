#include "host/com/connect.h"

#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "host/com/automation.h"
#include "host/com/com_object.h"
#include "host/com/host_calls.h"
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

class Connect final : public DispatchObject<AddInEntries> {
 public:
  explicit Connect(ConnectContext& context)
      : context_(context), hold_(std::in_place, context.process) {}

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                             DISPID* ids) noexcept override;
  STDMETHODIMP Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT* wrong_argument) noexcept override;

  STDMETHODIMP OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) noexcept override;
  STDMETHODIMP OnDisconnection(int, SAFEARRAY**) noexcept override;
  STDMETHODIMP OnAddInsUpdate(SAFEARRAY**) noexcept override { return S_OK; }
  STDMETHODIMP OnStartupComplete(SAFEARRAY**) noexcept override { return S_OK; }
  STDMETHODIMP OnBeginShutdown(SAFEARRAY**) noexcept override { return S_OK; }

 private:
  ~Connect() override;
  [[nodiscard]] void* Find(REFIID iid) noexcept override;
  template <class Action>
  HRESULT Try(Action action) noexcept {
    return context_.posted_calls.Guard().Run(action) ? S_OK : E_FAIL;
  }
  HRESULT InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument);
  void ConnectTo(const ComPtr<IDispatch>& host);
  // Does what was put off while the connection was being made.
  void CatchUp(const ComPtr<IDispatch>& host);
  // A call of HostDied for posting; it does nothing when the object is gone by then.
  [[nodiscard]] static std::function<void()> HostDiedOf(std::weak_ptr<Connect*> connect);
  void HostDied();
  void EndConnection();

  ConnectContext& context_;
  std::optional<ServerHold> hold_;  // until the host dies
  std::weak_ptr<HostConnection> connection_;
  std::unique_ptr<ProcessWatch> watch_;
  std::shared_ptr<Connect*> self_ = std::make_shared<Connect*>(this);
  bool connecting_ = false;
  bool died_while_connecting_ = false;
  bool disconnected_while_connecting_ = false;
};

Connect::~Connect() {
  // Ending the connection lets posted calls run, which must not take a reference any more.
  self_.reset();
  Try([this] { EndConnection(); });
}

void* Connect::Find(REFIID iid) noexcept {
  const bool has = iid == IID_IUnknown || iid == IID_IDispatch || iid == kIDTExtensibility ||
                   iid == kIDTExtensibility2;
  return has ? static_cast<AddInEntries*>(this) : nullptr;
}

STDMETHODIMP Connect::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                    DISPID* ids) noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (const auto& entry : kEntryNames) {
    if (lstrcmpiW(names[0], entry.name.data()) == 0) ids[0] = entry.id;
  }
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

STDMETHODIMP Connect::Invoke(DISPID entry, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
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
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT Connect::InvokeOnConnection(const DISPPARAMS& parameters, UINT* wrong_argument) {
  if (parameters.cArgs == 0) return DISP_E_BADPARAMCOUNT;
  const auto application =
      Variant::Dereferenced(parameters.rgvarg[parameters.cArgs - 1]).ToObject();
  if (application) return OnConnection(application.Get(), 0, nullptr, nullptr);
  if (wrong_argument) *wrong_argument = parameters.cArgs - 1;
  return DISP_E_TYPEMISMATCH;
}

STDMETHODIMP Connect::OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) noexcept {
  if (!application) return E_INVALIDARG;
  if (connecting_) return E_UNEXPECTED;
  WriteToCallLog("OnConnection");
  const ComPtr<IDispatch> host(application);
  connecting_ = true;
  const HRESULT connected = Try([&] { ConnectTo(host); });
  connecting_ = false;
  WriteToCallLog("connected");
  const HRESULT caught_up = Try([&] { CatchUp(host); });
  return FAILED(connected) ? connected : caught_up;
}

void Connect::ConnectTo(const ComPtr<IDispatch>& host) {
  EndConnection();
  // Watched from the first call on: the host may die in any of them.
  watch_ = std::make_unique<ProcessWatch>(
      HostMainWindow(host).value_or(nullptr),
      [&posted_calls = context_.posted_calls, weak = std::weak_ptr<Connect*>(self_)] {
        posted_calls.Post(HostDiedOf(weak));
      });
  const auto connection =
      context_.sessions.Begin(MakeHostApplication(host, context_.posted_calls.Guard()));
  connection_ = connection;
  context_.sessions.Connect(*connection);
}

void Connect::CatchUp(const ComPtr<IDispatch>& host) {
  // A host that died in the very first calls has no window to watch it by.
  if (!watch_ || !watch_->IsWatching()) {
    const auto window = HostMainWindow(host);
    if (!window && IsHostGone(window.error())) died_while_connecting_ = true;
  }
  const bool disconnected = std::exchange(disconnected_while_connecting_, false);
  if (std::exchange(died_while_connecting_, false)) {
    context_.posted_calls.Post(HostDiedOf(self_));
  } else if (disconnected) {
    OnDisconnection(0, nullptr);
  }
}

STDMETHODIMP Connect::OnDisconnection(int, SAFEARRAY**) noexcept {
  WriteToCallLog("OnDisconnection");
  // The connection that is being made has to be complete before it can be taken apart.
  if (connecting_) {
    disconnected_while_connecting_ = true;
    return S_OK;
  }
  return Try([this] { EndConnection(); });
}

void Connect::EndConnection() {
  if (const auto connection = connection_.lock()) {
    connection_.reset();
    context_.sessions.Disconnect(*connection);
  }
}

std::function<void()> Connect::HostDiedOf(std::weak_ptr<Connect*> connect) {
  return [connect = std::move(connect)] {
    if (const auto self = connect.lock()) (*self)->HostDied();
  };
}

void Connect::HostDied() {
  WriteToCallLog("the host is gone");
  // What there is of the connection can be given up when it has been made.
  if (connecting_) {
    died_while_connecting_ = true;
    if (const auto connection = connection_.lock()) context_.sessions.CloseBoxes(*connection);
    return;
  }
  const ComPtr<AddInEntries> self(this);
  watch_.reset();
  if (const auto connection = connection_.lock()) {
    connection_.reset();
    context_.sessions.Abandon(*connection);
  }
  // Gives up the references that the dead process held. The last one may go later, and from another
  // thread; the process does not wait for it.
  CoDisconnectObject(this, 0);
  hold_.reset();
}

class ConnectFactory final : public ComObject<IClassFactory> {
 public:
  explicit ConnectFactory(ConnectContext& context) : context_(context) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    HRESULT result = E_OUTOFMEMORY;
    context_.posted_calls.Guard().Run(
        [&] { result = MakeConnect(context_)->QueryInterface(iid, object); });
    return result;
  }
  STDMETHODIMP LockServer(BOOL lock) noexcept override {
    if (lock) {
      context_.process.AddHold();
    } else {
      context_.process.ReleaseHold();
    }
    return S_OK;
  }

 private:
  [[nodiscard]] void* Find(REFIID iid) noexcept override {
    const bool has = iid == IID_IUnknown || iid == IID_IClassFactory;
    return has ? static_cast<IClassFactory*>(this) : nullptr;
  }

  ConnectContext& context_;
};

}  // namespace

ComPtr<AddInEntries> MakeConnect(ConnectContext& context) {
  return ComPtr<AddInEntries>::Attach(new Connect(context));
}

ComPtr<IClassFactory> MakeConnectFactory(ConnectContext& context) {
  return ComPtr<IClassFactory>::Attach(new ConnectFactory(context));
}

}  // namespace declarium::com
