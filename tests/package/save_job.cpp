// Renames a library in the window of Declarium.exe and saves it:
//
//   save_job DECLARIUM.EXE NEW-TITLE
//
// Prints what the program answers with a message box, "saved" without one. The library is the first
// in the program's list. The user's settings are put away meanwhile.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <windows.h>

#include "text/text.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/job.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

void RenameAndSave(const std::filesystem::path& path, std::u16string_view title) {
  const DrivenProgram program(path);
  const HWND window = program.Form("frmMain");
  const HWND libraries = FindControl(window, "cmbDatabase");
  const auto name = ComboRows(libraries).at(0);
  ChooseRow(libraries, 0);
  WaitFor("the library", [&] { return TextOf(window).starts_with(name); });
  ChooseMenu(window, "mnuRename");
  AnswerText(program, title);
  ClickToolbar(window, "save");
  HWND message = nullptr;
  WaitFor("a message or the new title in the list", [&] {
    const auto rows = ComboRows(libraries);
    return (message = program.FindDialog()) || std::ranges::find(rows, title) != rows.end();
  });
  std::cout << (message ? ToUtf8(MessageOf(message)) : "saved") << std::endl;
  if (message) PressInDialog(message, IDOK);
  PostMessageW(window, WM_CLOSE, 0, 0);
  HWND question = nullptr;
  WaitFor("the end or a question",
          [&] { return !program.Runs() || (question = program.FindDialog()) != nullptr; });
  if (question) PressInDialog(question, IDNO);
  WaitFor("the end", [&] { return !program.Runs(); });
}

}  // namespace
}  // namespace declarium

int main() {
  return declarium::window_driver::RunJob("save_job", "DECLARIUM.EXE NEW-TITLE",
                                          declarium::RenameAndSave);
}
