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

// Double clicks an entry of the shared items and waits for the new entry of the basket.
void AddSharedItem(HWND frmMain, int entry);
// The place of the basket's entry of that name.
[[nodiscard]] int BasketEntryOf(HWND frmMain, std::u16string_view name);

// Types a pattern into the find box, presses Enter and waits for hits.
void FindNames(HWND frmMain, std::u16string_view pattern);
// Opens the search dialog, searches for what uses the type and clicks the first hit; returns the
// dialog. CloseSearch closes it again.
[[nodiscard]] HWND SearchForUsesOf(const DrivenProgram& program, HWND frmMain,
                                   std::u16string_view type);
void CloseSearch(const DrivenProgram& program, HWND frmFind);

// Opens the menu with that access key and waits until it is shown.
void OpenMenu(HWND frmMain, char key);
void AwaitOpenMenu();
// Closes what is open of menus, by their own key.
void ShutMenus(HWND frmMain);

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
