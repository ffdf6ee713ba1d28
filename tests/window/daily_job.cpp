// A short daily job in Declarium.exe, done from outside with the messages that a user's keys and
// mouse become:
//
//   daily_job DECLARIUM.EXE TITLE
//
// The library of that title stands in the program's folder and holds the usual window functions.
// Every step is printed, and pictures are asked for (window/picture_job.h). Exit status 0 when
// every step did what it should. The user's settings of the program are put away meanwhile.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

#include "text/text.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/job.h"
#include "window/picture_job.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

class DailyJob {
 public:
  explicit DailyJob(const std::filesystem::path& program) : program_(program) {}

  void Do(const std::u16string& library) {
    main_ = program_.Form("frmMain");
    TakePicture("splash", program_.Form("frmSplash"));
    WaitFor("the splash window's end", [this] { return !program_.FindForm("frmSplash"); });
    ChooseLibrary(library);
    AddItem(2, u"WINDOWPL", u"Type WINDOWPLACEMENT");
    AddTwoSharedItems();
    AddItem(1, u"SetWindowPl", u"Declare Function SetWindowPlacement");
    Find(u"*placement*");
    LookAtBasketEntry(u"WINDOWPLACEMENT", u"Type WINDOWPLACEMENT");
    TakePicture("main-window", main_);
    CopyBasket();
    ShowMenu();
    AddDeclaration();
    SearchByType();
    CheckLibrary();
    ChooseTarget();
    KeepTheItem();
    Save();
    Close();
  }

 private:
  [[nodiscard]] HWND In(std::string_view name) const { return FindControl(main_, name); }

  void ChooseLibrary(const std::u16string& library) {
    window_driver::ChooseLibrary(main_, library);
    Say("Chose the library " + ToUtf8(library) + ": " + ToUtf8(TextOf(main_)));
  }

  void AddItem(int kind, std::u16string_view beginning, std::u16string_view code) {
    const int names = TypeToItem(main_, kind, beginning, code);
    Say("Typed \"" + ToUtf8(beginning) + "\" among " + std::to_string(names) +
        " names, which shows:\n" + ToUtf8(TextOf(In("RTB"))));
    AddTypedItem(main_);
  }

  void AddTwoSharedItems() {
    for (int entry = 0; entry < 2; ++entry) AddSharedItem(main_, entry);
    Say("Added it and two of its shared items to the basket:");
    for (const auto& entry : Entries(In("lstAdd"))) Say("  " + ToUtf8(entry.substr(2)));
  }

  void Find(std::u16string_view pattern) {
    FindNames(main_, pattern);
    Say("Found by \"" + ToUtf8(pattern) + "\":");
    for (const auto& hit : ListRows(In("lstFind"))) Say("  " + ToUtf8(hit));
  }

  void LookAtBasketEntry(std::u16string_view name, std::u16string_view code) {
    ClickEntry(In("lstAdd"), BasketEntryOf(main_, name));
    WaitFor("the entry's code", [&] { return TextOf(In("RTB")).starts_with(code); });
  }

  void CopyBasket() {
    ClickToolbar(main_, "copy");
    std::u16string text;
    WaitFor("the clipboard", [&] { return !(text = ClipboardText()).empty(); });
    Say("Copied the basket:\n" + ToUtf8(text));
  }

  void ShowMenu() {
    OpenMenu(main_, 'd');
    TakePicture("menu", main_);
    ShutMenus(main_);
  }

  void AddDeclaration() {
    ChooseMenu(main_, "mnuAdd");
    const HWND dialog = program_.Form("frmAdd");
    SetText(FindControl(dialog, "Text1"),
            u"' N\u00e1\u0161 \u010d\u00edta\u010d\r\nConst MY_TIMER As Long = 1 'first timer\r\n");
    TakePicture("add-item", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
    Say("Added a declaration of our own, MY_TIMER");
  }

  void SearchByType() {
    const HWND dialog = SearchForUsesOf(program_, main_, u"WINDOWPLACEMENT");
    TakePicture("search", dialog);
    Say("Searched for what uses WINDOWPLACEMENT; " +
        ToUtf8(TextOf(FindControl(dialog, "labCount"))));
    for (const auto& entry : Entries(FindControl(dialog, "LV1"))) {
      Say("  " + ToUtf8(entry.substr(2)));
    }
    CloseSearch(program_, dialog);
  }

  void CheckLibrary() {
    ChooseMenu(main_, "mnuAdd");
    SetText(FindControl(program_.Form("frmAdd"), "Text1"),
            u"Declare Sub Nap Lib \"kernel32\" Alias \"Sleep\" (dwMilliseconds As Long)\r\n"
            u"Const LOW_WORD As Long = &HFFFF\r\n");
    PressButton(FindControl(program_.Form("frmAdd"), "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
    ChooseMenu(main_, "mnuCheck");
    const HWND dialog = program_.Form("frmCheck");
    WaitFor("the findings", [&] { return !Entries(FindControl(dialog, "LV1")).empty(); });
    TakePicture("check", dialog);
    Say("Checked the library; " + ToUtf8(TextOf(FindControl(dialog, "labCount"))));
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the item", [this] { return TextOf(In("RTB")).contains(u"dwMilliseconds"); });
    TakePicture("checked-item", main_);
    PressButton(FindControl(dialog, "Command2"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmCheck"); });
  }

  void ChooseTarget() {
    ChooseSettings();
    WaitFor("the form of VBA 7", [this] { return TextOf(In("RTB")).starts_with(u"#If VBA7"); });
    TakePicture("target", main_);
    Say("Declarations are written for VBA 7 now:\n" + ToUtf8(TextOf(In("RTB"))));
  }

  void ChooseSettings() {
    ClickToolbar(main_, "settings");
    const HWND settings = program_.Form("frmOptions");
    TakePicture("settings", settings);
    DoubleClick(FindControl(settings, "picColor1"), {8, 8});
    const HWND colors = program_.Dialog();
    TakePicture("colors", colors);
    PressInDialog(colors, IDCANCEL);
    ChooseRow(FindControl(settings, "cmbTarget"), 1);
    PressButton(FindControl(settings, "Command2"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmOptions"); });
    Say("Looked at the colors and left them as they are");
  }

  void KeepTheItem() {
    ChooseMenu(main_, "mnuRename");
    TakePicture("rename", program_.Form("frmInput"));
    AnswerText(program_, u"Windows");
    PostMessageW(main_, WM_CLOSE, 0, 0);
    const HWND question = program_.Dialog();
    TakePicture("question", question);
    Say("Renamed the library; closing asks: " + ToUtf8(MessageOf(question)));
    PressInDialog(question, IDCANCEL);
  }

  void Save() {
    ClickToolbar(main_, "save");
    WaitFor("the catalogue", [this] {
      const auto rows = ComboRows(In("cmbDatabase"));
      return std::find(rows.begin(), rows.end(), u"Windows") != rows.end();
    });
    Say("Saved the library");
  }

  void Close() {
    PostMessageW(main_, WM_CLOSE, 0, 0);
    Say("Closed; exit status " + std::to_string(program_.WaitForEnd()));
  }

  DrivenProgram program_;
  HWND main_ = nullptr;
};

}  // namespace
}  // namespace declarium

int main() {
  return declarium::window_driver::RunJob(
      "daily_job", "DECLARIUM.EXE TITLE",
      [](const auto& program, const auto& title) { declarium::DailyJob(program).Do(title); });
}
