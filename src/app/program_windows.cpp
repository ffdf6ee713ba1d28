#include "app/program_windows.h"

#include <exception>
#include <utility>

#include "host/host_connection.h"
#include "toolkit/held_flag.h"

namespace declarium {

// A box in the list of those that are open, for as long as it is. Those that are opened meanwhile
// have closed by its end.
class ProgramWindows::ListedBox {
 public:
  ListedBox(std::vector<HostBox>& boxes, const HostBox& box) : boxes_(boxes) {
    boxes_.push_back(box);
  }
  ListedBox(const ListedBox&) = delete;
  ListedBox& operator=(const ListedBox&) = delete;
  ~ListedBox() { boxes_.pop_back(); }

 private:
  std::vector<HostBox>& boxes_;
};

ProgramWindows::ProgramWindows(Toolkit& toolkit, SettingsStore& store, std::filesystem::path folder,
                               MakeHold make_hold, std::filesystem::path history)
    : toolkit_(toolkit),
      store_(store),
      folder_(std::move(folder)),
      make_hold_(std::move(make_hold)),
      history_(std::move(history)) {}

bool ProgramWindows::LoadMainWindow(HostConnection& connection) {
  // What the user does in the shown window is meant for the host that showed it.
  if (connection_ == nullptr || !window_ || !window_->IsShown()) connection_ = &connection;
  // The session did not end after all, though the window had been unloaded for it.
  if (window_ && !window_->IsLoaded()) toolkit_.DestroyLater(std::move(window_));
  return window_ || LoadNewWindow();
}

bool ProgramWindows::LoadNewWindow() {
  try {
    window_ = std::make_unique<MainWindow>(toolkit_, store_,
                                           MainWindowOptions{.folder = folder_,
                                                             .command_line = {},
                                                             .mode = RunMode::kInHost,
                                                             .host = LinkToHost(),
                                                             .history = history_});
    window_->Load();
    return true;
  } catch (const std::exception&) {
    window_.reset();
    return false;
  }
}

void ProgramWindows::ShowMainWindow(HostConnection& connection) {
  connection_ = &connection;
  if (!LoadMainWindow(connection)) return;
  // Loading processes events, and the last host may have disconnected by one.
  if (window_) Show();
}

void ProgramWindows::Show() {
  if (!hold_) hold_ = make_hold_();
  window_->HostChanged();
  window_->ShowMainWindow();
}

void ProgramWindows::ForgetConnection(HostConnection& connection, HostConnection* successor) {
  CloseBoxes(connection);
  if (connection_ != &connection) return;
  connection_ = successor;
  if (window_) window_->HostChanged();
}

bool ProgramWindows::MayStay() {
  return toolkit_.IsModalOpen();
}

bool ProgramWindows::UnloadWindow() {
  const HeldFlag unloading(unloading_);
  return !window_ || window_->Unload();
}

void ProgramWindows::UnloadAll() {
  if (unloading_) return;
  if (UnloadWindow()) {
    // One of its handlers may be what let the host in.
    if (window_) toolkit_.DestroyLater(std::move(window_));
    hold_.reset();
  } else {
    // A user who cancels the closing keeps the window, and with it the process.
    Show();
  }
}

void ProgramWindows::ActiveCodeModuleChanged(HostConnection& connection) {
  if (window_ && connection_ == &connection) window_->CodeModuleChanged();
}

void ProgramWindows::ShowFailure(HostConnection& connection, std::u16string_view text) {
  OpenMessage box(connection.MainWindow());
  ShowFor(connection, box,
          {std::u16string(text), MessageButtons::kAbortRetryIgnore, MessageIcon::kCritical},
          Answer::kIgnore);
}

void ProgramWindows::CloseBoxes(HostConnection& connection) {
  for (const auto& open : boxes_) {
    if (open.connection == &connection) open.box->End(open.closed);
  }
}

Answer ProgramWindows::ShowFor(HostConnection& connection, OpenMessage& box, const Message& message,
                               Answer closed) {
  const ListedBox listed(boxes_, {&connection, &box, closed});
  return toolkit_.ShowMessage(message, box);
}

HostLink ProgramWindows::LinkToHost() {
  return {.has_code_module =
              [this] { return connection_ != nullptr && connection_->HasActiveCodeModule(); },
          .insert = [this](const std::function<std::u16string()>& text) { Insert(text); },
          .connection = [this]() -> std::shared_ptr<HostConnection> {
            return connection_ ? connection_->shared_from_this() : nullptr;
          },
          .check_code_module =
              [this] {
                CallHost([](HostConnection& connection) { connection.CheckActiveCodeModule(); });
              },
          .target =
              [this] {
                const auto application = connection_ ? connection_->Application() : nullptr;
                return application ? application->Target() : vb::Audience::kVb6;
              },
          .hidden = [this] { hold_.reset(); }};
}

void ProgramWindows::Insert(const std::function<std::u16string()>& text) {
  CallHost([&](HostConnection& connection) {
    const auto ask = [&](std::u16string_view question) {
      OpenMessage box;
      return ShowFor(connection, box,
                     {std::u16string(question), MessageButtons::kYesNo, MessageIcon::kQuestion},
                     Answer::kNo) == Answer::kYes;
    };
    const auto outcome = connection.Insert(ask, text);
    // Of a host that has gone meanwhile nothing more is wanted.
    if (outcome || !connection.IsConnected()) return;
    OpenMessage box;
    ShowFor(connection, box,
            {InsertionFailureText(outcome.error()), MessageButtons::kOk, MessageIcon::kCritical},
            Answer::kOk);
  });
}

void ProgramWindows::CallHost(const std::function<void(HostConnection&)>& call) const {
  if (connection_ == nullptr) return;
  const auto connection = connection_->shared_from_this();
  call(*connection);
}

}  // namespace declarium
