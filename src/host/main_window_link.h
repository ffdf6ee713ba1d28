// The seam between the connection to the host and the program's windows. The program implements it
// with its real main window; tests implement it with a log.
#pragma once

#include <string_view>

namespace declarium {

class HostConnection;

class MainWindowLink {
 public:
  virtual ~MainWindowLink() = default;

  // Loads the main window, without showing it, if it is not yet loaded, and binds it to
  // `connection` unless another host's user works in it. Returns false when the window cannot be
  // loaded.
  [[nodiscard]] virtual bool LoadMainWindow(HostConnection& connection) = 0;

  // Loads the main window if need be, binds it to `connection` and shows it; a window that is shown
  // already comes to the front. Never called from within a call of the host.
  virtual void ShowMainWindow(HostConnection& connection) = 0;

  // `connection` is about to end: nothing may use it afterwards. `successor` is another connected
  // host that takes the main window over, null when there is none.
  virtual void ForgetConnection(HostConnection& connection, HostConnection* successor) = 0;

  // Whether the main window is loaded and in use, for example because a modal dialog is open.
  [[nodiscard]] virtual bool MayStay() = 0;

  // Unloads every window of the program.
  virtual void UnloadAll() = 0;

  // The active code module of `connection` was replaced.
  virtual void ActiveCodeModuleChanged(HostConnection& connection) = 0;

  // Shows a box with the Abort, Retry and Ignore buttons and the critical icon, in front of the
  // host's window. The choice has no effect. Windows of the program that other hosts use go on.
  virtual void ShowFailure(HostConnection& connection, std::u16string_view text) = 0;

  // The host of `connection` is gone: the boxes that are open for it close. ForgetConnection does
  // so too, for a host that disconnects.
  virtual void CloseBoxes(HostConnection& connection) = 0;
};

}  // namespace declarium
