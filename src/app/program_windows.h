// The program's windows as the hosts connected to it use them: one main window for all, bound to
// the host that showed it last.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "app/main_window.h"
#include "host/main_window_link.h"
#include "shell/settings_store.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ProgramWindows final : public MainWindowLink {
 public:
  // Keeps the process alive for as long as what it returns lives.
  using MakeHold = std::function<std::shared_ptr<void>()>;

  // Runs a call later, from the message loop; drops it when the windows are gone by then.
  using Post = std::function<void(std::function<void()>)>;

  // `toolkit` and `store` must outlive the windows.
  ProgramWindows(Toolkit& toolkit, SettingsStore& store, std::filesystem::path folder,
                 MakeHold make_hold, Post post);

  bool LoadMainWindow(HostConnection& connection) override;
  void ShowMainWindow(HostConnection& connection) override;
  void ForgetConnection(HostConnection& connection, HostConnection* successor) override;
  bool MayStay() override;
  void UnloadAll() override;
  void ActiveCodeModuleChanged(HostConnection& connection) override;
  void ShowFailure(std::u16string_view text) override;

 private:
  [[nodiscard]] HostLink LinkToHost();
  void Insert(const std::function<std::u16string()>& text);
  // Makes a call to the host from one of the window's handlers. A host that disconnects meanwhile
  // must not take away the window whose handler runs: that waits until the handler has returned.
  void CallHost(const std::function<void(HostConnection&)>& call);
  void UnloadIfForgotten();

  Toolkit& toolkit_;
  SettingsStore& store_;
  std::filesystem::path folder_;
  MakeHold make_hold_;
  Post post_;
  std::unique_ptr<MainWindow> window_;
  HostConnection* connection_ = nullptr;  // the host that the window is bound to
  std::shared_ptr<void> hold_;            // while the window is shown
  int host_calls_ = 0;                    // that handlers of the window are in
  bool unload_later_ = false;             // when those handlers have returned
};

}  // namespace declarium
