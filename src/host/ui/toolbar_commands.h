// The main window's toolbar: which command each button's key runs, and the two commands that take
// the basket's text away: copy and export.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "library/file_saver.h"
#include "toolkit/toolbar.h"
#include "toolkit/toolkit.h"

namespace declarium {

// What the buttons run, by key.
struct ToolbarActions {
  std::function<void()> new_database;
  std::function<void()> open;
  std::function<void()> save;
  std::function<void()> add;
  std::function<void()> delete_entry;
  std::function<void()> insert;
  std::function<void()> find;
  std::function<void()> settings;
  std::function<void()> insert_missing;
  std::function<std::u16string()> basket_text;  // for "copy" and "export"
};

class ToolbarCommands {
 public:
  // Everything given by reference must outlive the commands.
  ToolbarCommands(Toolkit& toolkit, FileSaver& saver, Toolbar& Toolbar1, ToolbarActions actions);

  void Toolbar1_ButtonClick(std::string_view key);

 private:
  void Copy();
  void Export();

  Toolkit& toolkit_;
  FileSaver& saver_;
  ToolbarActions actions_;
};

}  // namespace declarium
