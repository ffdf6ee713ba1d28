// One connection between a running host and the add-in: from OnConnection to OnDisconnection.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/active_code_module.h"
#include "host/face_clipboard.h"
#include "host/host_object_model.h"
#include "host/insertion.h"
#include "host/main_window_link.h"

namespace declarium {

class HostConnection : public std::enable_shared_from_this<HostConnection> {
 public:
  // Runs a call later, when the current call of the host has returned.
  using Post = std::function<void(std::function<void()>)>;

  // The link, the clipboard and what `post` refers to must outlive the connection, which is to be
  // owned by a std::shared_ptr: posted calls find it gone when it is.
  HostConnection(std::unique_ptr<HostApplication> application, FaceClipboard& clipboard,
                 MainWindowLink& windows, Post post);
  HostConnection(const HostConnection&) = delete;
  HostConnection& operator=(const HostConnection&) = delete;
  ~HostConnection();

  // Loads the main window, adds the toolbar button and the menu entry and follows the host's active
  // code module. A failing step is shown with its number and name and ends the connection routine,
  // without a box when the host is gone; controls already added stay. The clipboard is as before
  // unless a control could not be added. A face that cannot be pasted is no failure, nor is a
  // clipboard that cannot be had: the control then shows its caption.
  void Connect();

  // As Connect for a host with controls of its own: only loads the main window and follows the
  // active code module. False when the window cannot be loaded, which the host's add-in tells.
  [[nodiscard]] bool ConnectWithoutControls();

  // Removes the controls and ends all events. Returns false when a step failed, which has been
  // shown then. Calling it again does nothing.
  bool Disconnect();

  // Ends all events without touching the controls: the host died and takes no calls.
  void Abandon();

  // Shows the main window when the current call of the host has returned, since the host waits for
  // it.
  void ShowMainWindowLater();

  // Shows the main window, bound to this host.
  void ShowMainWindow();

  // Whether there is an active code module to insert into.
  [[nodiscard]] bool HasActiveCodeModule() const noexcept { return active_->Module() != nullptr; }

  // One turn of the 100 ms timer CodeModuleChecker.
  void CheckActiveCodeModule() { active_->Check(); }

  // Null when there is none. Who keeps one over a call that lets events in looks at IsConnected
  // afterwards.
  [[nodiscard]] std::shared_ptr<CodeModule> ActiveModule() const noexcept {
    return active_->Module();
  }
  // Null when disconnected.
  [[nodiscard]] std::shared_ptr<HostApplication> Application() const noexcept {
    return application_;
  }
  // False when it was disconnected or abandoned.
  [[nodiscard]] bool IsConnected() const noexcept { return application_ != nullptr; }

  // The handle of the host's main window, known while a failure is shown; 0 when the host did not
  // say it.
  [[nodiscard]] std::uintptr_t MainWindow() const noexcept { return main_window_; }

  // Tells the connection whether hosts beside its own are connected.
  void SetOtherHosts(bool others) noexcept { other_hosts_ = others; }

  // InsertIntoActiveModule on the active code module; the caret's line stays in view. The question
  // names the project where more than one project or host is open. A host that
  // disconnects during the question has everything back when Disconnect returns.
  [[nodiscard]] std::expected<Insertion, InsertionFailure> Insert(
      const std::function<bool(std::u16string_view question)>& ask,
      const std::function<std::u16string()>& text);

 private:
  [[nodiscard]] ModuleNaming Naming() const;

  struct StepFailure {
    int step;  // from 1 on
    HostError error;
  };

  [[nodiscard]] std::expected<void, StepFailure> RunConnectionSteps();
  void FindMainWindow();
  // Puts the picture on the clipboard, whose contents it keeps; without the clipboard the controls
  // come without it.
  [[nodiscard]] HostResult<> PutPicture();
  [[nodiscard]] HostResult<> AddButton();
  [[nodiscard]] HostResult<> AddMenuEntry();
  [[nodiscard]] HostResult<> RestoreClipboard();
  // After a failure: a control that could not be added leaves the picture on the clipboard.
  void GiveClipboardUp(bool restore);
  [[nodiscard]] HostResult<> BindClicks();
  // The toolbar button's click; the menu entry's forwards to it.
  void ButtonClicked() { ShowMainWindowLater(); }
  void MenuClicked() { ButtonClicked(); }

  std::shared_ptr<HostApplication> application_;  // null when disconnected
  FaceClipboard& clipboard_;
  MainWindowLink& windows_;
  Post post_;
  std::shared_ptr<CodeModule> inserted_into_;  // while it is asked about and written to
  std::unique_ptr<KeptClipboard> kept_;        // while the picture is on the clipboard
  std::uintptr_t main_window_ = 0;
  std::unique_ptr<CommandBarControl> menu_control_;
  std::unique_ptr<CommandBarControl> button_control_;
  std::unique_ptr<Subscription> menu_handler_;
  std::unique_ptr<Subscription> button_handler_;
  std::shared_ptr<ActiveCodeModule> active_;
  bool other_hosts_ = false;
};

}  // namespace declarium
