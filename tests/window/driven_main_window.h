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

// Waits for the input box, types and presses OK.
void AnswerText(const DrivenProgram& program, std::u16string_view text);

// Deletes the settings that earlier runs of the program left.
void ForgetSettings();

// The clipboard's text, empty when another program has it open.
[[nodiscard]] std::u16string ClipboardText();

}  // namespace declarium::window_driver
