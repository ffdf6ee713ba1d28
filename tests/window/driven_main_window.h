// The main window of another program: its commands by the names of its form.
#pragma once

#include <string>
#include <string_view>
#include <windows.h>

#include "window/window_driver.h"

namespace declarium::window_driver {

// A menu entry (mnuSave ...) and a toolbar button by its key ("copy" ...). The system tells the
// menus of a window only to its own process, so the entry's command goes straight to the form.
void ChooseMenu(HWND frmMain, std::string_view name);
void ClickToolbar(HWND frmMain, std::string_view key);
[[nodiscard]] bool ToolbarEnabled(HWND frmMain, std::string_view key);

// Chooses the library of that title in the selector of libraries and waits until it is open.
void ChooseLibrary(HWND frmMain, std::u16string_view title);

// Chooses the kind by its row (0 constants, 1 declares, 2 types) and types the beginning of a name
// into the type-ahead box; waits until code that starts with `code` is shown. Returns the number of
// names in the kind's list.
int TypeToItem(HWND frmMain, int kind, std::u16string_view beginning, std::u16string_view code);
// Presses Enter in the type-ahead box and waits for the new entry of the basket.
void AddTypedItem(HWND frmMain);

// Waits for the input box, types and presses OK.
void AnswerText(const DrivenProgram& program, std::u16string_view text);

// Puts the user's settings of the program away for as long as it lives: the program starts without
// any, and what it stores meanwhile is forgotten. When the process is ended meanwhile, the next one
// puts them back. One at a time for each user.
class SettingsPutAway {
 public:
  SettingsPutAway();
  SettingsPutAway(const SettingsPutAway&) = delete;
  SettingsPutAway& operator=(const SettingsPutAway&) = delete;
  ~SettingsPutAway();
};

// The clipboard's text, empty when another program has it open.
[[nodiscard]] std::u16string ClipboardText();

}  // namespace declarium::window_driver
