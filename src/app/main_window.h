// The main window: it owns the open library, the basket and everything that works on them, and
// lives from the program's start (or the host's connection) to its end.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "basket/ui/basket_view.h"
#include "basket/ui/list_commands.h"
#include "check/ui/check_dialog.h"
#include "host/ui/module_commands.h"
#include "host/ui/project_commands.h"
#include "host/ui/toolbar_commands.h"
#include "import/ui/add_dialog.h"
#include "import/ui/import_command.h"
#include "library/file_saver.h"
#include "library/file_system.h"
#include "library/library.h"
#include "library/ui/kind_selector.h"
#include "library/ui/library_commands.h"
#include "needs/ui/item_display.h"
#include "search/ui/quick_find_view.h"
#include "search/ui/search_dialog.h"
#include "shell/settings_store.h"
#include "shell/ui/guide.h"
#include "shell/ui/main_form.h"
#include "shell/ui/splitter.h"
#include "source/ui/code_display.h"
#include "source/ui/export_command.h"
#include "target/target_writer.h"
#include "toolkit/toolkit.h"

namespace declarium {

enum class RunMode {
  kStandalone,  // closing the window ends the program
  kInHost,      // closing hides the window for the next time, unless the session ends
};

// What the main window asks of the host it works in; without a host nothing is active.
struct HostLink {
  std::function<bool()> has_code_module = [] { return false; };
  // Inserts the basket's text, which is built only after the user agreed.
  std::function<void(const std::function<std::u16string()>& text)> insert = [](const auto&) {};
  // The connection to the host; null without one.
  std::function<std::shared_ptr<HostConnection>()> connection = [] { return nullptr; };
  std::function<void()> check_code_module = [] {};  // every 100 ms while the window is in use
  // Whose declarations the host takes, unless the user chose others.
  std::function<vb::Audience()> target = [] { return vb::Audience::kVb6; };
  std::function<void()> hidden = [] {};  // closing has hidden or unloaded the window
};

struct MainWindowOptions {
  std::filesystem::path folder;        // the program's folder, which holds the libraries
  std::filesystem::path command_line;  // a library to open at start, or empty
  RunMode mode = RunMode::kStandalone;
  HostLink host;
  std::filesystem::path history = {};  // the history's folder; empty: what is replaced is not kept
  FileSystem* files = &SystemFiles();  // what is written goes through them
};

class MainWindow {
 public:
  // `toolkit` and `store` must outlive the window.
  MainWindow(Toolkit& toolkit, SettingsStore& store, MainWindowOptions options);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  // Reads the settings, lays the window out, opens the last library; once.
  void Load();
  // Loads the window if needed, and shows it or brings it forward.
  void ShowMainWindow();
  // Unloads the window whatever the run mode; false when the user cancelled the closing.
  bool Unload();
  // An unloaded window stays unloaded.
  [[nodiscard]] bool IsLoaded() const { return form_.frmMain->IsLoaded(); }
  [[nodiscard]] bool IsShown() const { return form_.frmMain->Visible(); }
  // Keeps unsaved changes in the history, for when nobody can be asked; false when there are none
  // or that failed.
  bool KeepUnsaved() { return commands_.KeepUnsaved(); }
  // The host's active code module has come, gone or changed.
  void CodeModuleChanged();
  // The window works in another host: declarations are written for that one, unless the user chose.
  void HostChanged();

  [[nodiscard]] MainForm& Controls() noexcept { return form_; }

 private:
  friend class MainWindowProbe;  // of the tests

  void Form_Load();
  void Form_Resize();
  void Form_QueryUnload(QueryUnload& query);
  void Form_Unload(bool& cancel);
  void WireLists();
  void WriteSettings();
  void ShowOptions();
  // As SetTarget, and shows the selected item so.
  void TakeTarget(vb::Audience target);
  // Writes declarations for this target from now on.
  void SetTarget(vb::Audience target);
  // Asks whether to do so, and remembers it.
  void OfferTarget(vb::Audience target);
  // Source text of the library as the target wants it.
  [[nodiscard]] std::u16string ForTarget(std::u16string text);
  [[nodiscard]] std::u16string BasketText();
  [[nodiscard]] SearchLinks LinksForSearch();
  [[nodiscard]] CheckLinks LinksForCheck();
  // Selects the item in the list of its kind, as a user does; false when there is none.
  bool GoTo(Kind kind, std::u16string_view name);
  [[nodiscard]] ToolbarActions ActionsForToolbar();
  [[nodiscard]] ModuleCommandLinks LinksForModules();
  [[nodiscard]] ProjectCommandLinks LinksForProject();
  [[nodiscard]] LibrariesInUse LibrariesForModules() const;

  Toolkit& toolkit_;
  SettingsStore& store_;
  MainWindowOptions options_;
  FileSaver saver_;
  Library library_;
  DisplayColors colors_;
  TargetWriter writer_;
  PaneSizes panes_;
  bool resize_suppressed_ = false;
  bool laid_out_once_ = false;
  bool unloading_for_good_ = false;
  bool session_ends_ = false;  // is why it is being unloaded

  MainForm form_;
  Guide guide_;
  KindSelector selector_;
  CodeDisplay code_display_;
  ItemDisplay item_display_;
  LibraryCommands commands_;
  ImportCommand import_command_;
  AddDialog add_dialog_;
  ExportCommand export_command_;
  BasketView basket_view_;
  ListCommands list_commands_;
  QuickFindView quick_find_;
  SearchDialog search_dialog_;
  CheckDialog check_dialog_;
  ModuleCommands module_commands_;
  ProjectCommands project_commands_;
  ToolbarCommands toolbar_;
  Splitter main_width_bar_;
  Splitter rtb_height_bar_;
  Splitter add_height_bar_;
};

}  // namespace declarium
