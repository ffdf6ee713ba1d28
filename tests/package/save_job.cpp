// Renames a library in the window of Declarium.exe and saves it:
//
//   save_job DECLARIUM.EXE NEW-TITLE
//
// Prints what the program answers with message boxes, "saved" without one. The library is the first
// in the program's list. The user's settings are put away meanwhile, and the history is one of its
// own.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <windows.h>

#include "support/temporary_folder.h"
#include "text/text.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/job.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

void Answer(HWND message) {
  std::cout << ToUtf8(MessageOf(message)) << std::endl;
  PressInDialog(message, IDOK);
}

void RenameAndSave(const std::filesystem::path& path, std::u16string_view title) {
  const TemporaryFolder history;
  SetEnvironmentVariableW(L"DECLARIUM_HISTORY", history.path().c_str());
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
  if (message) {
    Answer(message);
    Answer(program.Dialog());  // that the changes are kept
  } else {
    std::cout << "saved" << std::endl;
  }
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
