#include "host/com/connect.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "host/com/editor_application.h"
#include "host/com/editor_interface.h"
#include "host/com/host_calls.h"
#include "host/com/process_watch.h"
#include "host/com/vb_host_application.h"

namespace declarium::com {
namespace {

// How a host is taken: the IDE, whose objects are called from here, or a VBA editor, which has an
// add-in of its own in its process.
struct HostKind {
  std::unique_ptr<HostApplication> (*make_application)(ComPtr<IDispatch> host, Boundary& boundary);
  HostResult<HWND> (*main_window)(const ComPtr<IDispatch>& host);
  // False when it has failed without a box.
  bool (*connect)(HostSessions& sessions, HostConnection& connection);
};

constexpr HostKind kIde = {MakeHostApplication, HostMainWindow,
                           [](HostSessions& sessions, HostConnection& connection) {
                             sessions.Connect(connection);
                             return true;
                           }};
constexpr HostKind kVbaEditor = {MakeEditorApplication, EditorMainWindow,
                                 [](HostSessions& sessions, HostConnection& connection) {
                                   return sessions.ConnectWithoutControls(connection);
                                 }};

class Connect final : public AddInObject {
 public:
  explicit Connect(ConnectContext& context)
      : context_(context), hold_(std::in_place, context.process) {}

  STDMETHODIMP OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) noexcept override;
  STDMETHODIMP OnDisconnection(int, SAFEARRAY**) noexcept override;

 private:
  ~Connect() override;
  HRESULT InvokeOther(DISPID entry, const DISPPARAMS& parameters) noexcept override;
  template <class Action>
  HRESULT Try(Action action) noexcept {
    return context_.posted_calls.Guard().Run(action) ? S_OK : E_FAIL;
  }
  // `OnConnection` of a host of this kind.
  HRESULT TakeHost(const ComPtr<IDispatch>& host, const HostKind& kind) noexcept;
  [[nodiscard]] bool ConnectTo(const ComPtr<IDispatch>& host, const HostKind& kind);
  // Does what was put off while the connection was being made.
  void CatchUp(const ComPtr<IDispatch>& host, const HostKind& kind);
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

STDMETHODIMP Connect::OnConnection(IDispatch* application, int, IDispatch*, SAFEARRAY**) noexcept {
  if (!application) return E_INVALIDARG;
  return TakeHost(ComPtr<IDispatch>(application), kIde);
}

HRESULT Connect::InvokeOther(DISPID entry, const DISPPARAMS& parameters) noexcept {
  if (entry == editor::kConnectEditor.id) {
    const auto editor = ObjectArgument(parameters, 0);
    return editor ? TakeHost(editor, kVbaEditor) : E_INVALIDARG;
  }
  if (entry != editor::kShowWindow.id) return DISP_E_MEMBERNOTFOUND;
  const auto connection = connection_.lock();
  if (!connection) return E_UNEXPECTED;
  return Try([&] { connection->ShowMainWindowLater(); });
}

HRESULT Connect::TakeHost(const ComPtr<IDispatch>& host, const HostKind& kind) noexcept {
  if (connecting_) return E_UNEXPECTED;
  WriteToCallLog("OnConnection");
  connecting_ = true;
  bool done = false;
  Try([&] { done = ConnectTo(host, kind); });
  connecting_ = false;
  WriteToCallLog("connected");
  const HRESULT caught_up = Try([&] { CatchUp(host, kind); });
  return done ? caught_up : E_FAIL;
}

bool Connect::ConnectTo(const ComPtr<IDispatch>& host, const HostKind& kind) {
  EndConnection();
  // Watched from the first call on: the host may die in any of them.
  watch_ = std::make_unique<ProcessWatch>(
      kind.main_window(host).value_or(nullptr),
      [&posted_calls = context_.posted_calls, weak = std::weak_ptr<Connect*>(self_)] {
        posted_calls.Post(HostDiedOf(weak));
      });
  const auto connection =
      context_.sessions.Begin(kind.make_application(host, context_.posted_calls.Guard()));
  connection_ = connection;
  return kind.connect(context_.sessions, *connection);
}

void Connect::CatchUp(const ComPtr<IDispatch>& host, const HostKind& kind) {
  // A host that died in the very first calls has no window to watch it by.
  if (!watch_ || !watch_->IsWatching()) {
    const auto window = kind.main_window(host);
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

class ConnectFactory final : public AddInFactory {
 public:
  explicit ConnectFactory(ConnectContext& context) : context_(context) {}

  STDMETHODIMP LockServer(BOOL lock) noexcept override {
    if (lock) {
      context_.process.AddHold();
    } else {
      context_.process.ReleaseHold();
    }
    return S_OK;
  }

 private:
  ComPtr<AddInEntries> Make() noexcept override {
    ComPtr<AddInEntries> made;
    context_.posted_calls.Guard().Run([&] { made = MakeConnect(context_); });
    return made;
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
