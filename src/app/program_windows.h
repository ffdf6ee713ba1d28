// The program's windows as the hosts connected to it use them: one main window for all, bound to
// the host that showed it last.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "app/main_window.h"
#include "host/main_window_link.h"
#include "shell/settings_store.h"
#include "toolkit/toolkit.h"

namespace declarium {

class ProgramWindows final : public MainWindowLink {
 public:
  // Keeps the process alive for as long as what it returns lives.
  using MakeHold = std::function<std::shared_ptr<void>()>;

  // `toolkit` and `store` must outlive the windows. `history` is the folder of the history, empty
  // for none.
  ProgramWindows(Toolkit& toolkit, SettingsStore& store, std::filesystem::path folder,
                 MakeHold make_hold, std::filesystem::path history = {});

  bool LoadMainWindow(HostConnection& connection) override;
  void ShowMainWindow(HostConnection& connection) override;
  void ForgetConnection(HostConnection& connection, HostConnection* successor) override;
  bool MayStay() override;
  void UnloadAll() override;
  void ActiveCodeModuleChanged(HostConnection& connection) override;
  void ShowFailure(HostConnection& connection, std::u16string_view text) override;
  void CloseBoxes(HostConnection& connection) override;

  // As MainWindow's.
  bool KeepUnsaved() { return window_ && window_->KeepUnsaved(); }

 private:
  [[nodiscard]] bool LoadNewWindow();
  [[nodiscard]] HostLink LinkToHost();
  // False when the user cancelled.
  [[nodiscard]] bool UnloadWindow();
  void Show();
  void Insert(const std::function<std::u16string()>& text);
  // Shows a box that closes with `closed` when the connection is about to end.
  Answer ShowFor(HostConnection& connection, OpenMessage& box, const Message& message,
                 Answer closed);
  // Calls the host, which may disconnect meanwhile: the connection stays until the call is over.
  void CallHost(const std::function<void(HostConnection&)>& call) const;

  // A box that is open for a host.
  struct HostBox {
    HostConnection* connection;
    OpenMessage* box;
    Answer closed;
  };
  class ListedBox;

  Toolkit& toolkit_;
  SettingsStore& store_;
  std::filesystem::path folder_;
  MakeHold make_hold_;
  std::filesystem::path history_;
  std::unique_ptr<MainWindow> window_;
  HostConnection* connection_ = nullptr;  // the host that the window is bound to
  std::shared_ptr<void> hold_;            // while the window is shown
  bool unloading_ = false;
  std::vector<HostBox> boxes_;  // the innermost last
};

}  // namespace declarium
