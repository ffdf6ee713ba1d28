// A short daily job in Declarium.exe, done from outside with the messages that a user's keys and
// mouse become:
//
//   daily_job DECLARIUM.EXE TITLE
//
// The library of that title stands in the program's folder and holds the usual window functions.
// Every step is printed, and pictures are asked for (window/picture_job.h). Exit status 0 when
// every step did what it should. The user's settings of the program are put away meanwhile.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>
#include <shellapi.h>

#include "basic/text.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/picture_job.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

void Screenshot(const std::string& name, HWND window) {
  TakePicture(name, ToUtf8(TextOf(window)));
}

class DailyJob {
 public:
  explicit DailyJob(const std::filesystem::path& program) : program_(program) {}

  void Do(const std::u16string& library) {
    main_ = program_.Form("frmMain");
    Screenshot("splash", program_.Form("frmSplash"));
    WaitFor("the splash window's end", [this] { return !program_.FindForm("frmSplash"); });
    ChooseLibrary(library);
    AddItem(2, u"WINDOWPL", u"Type WINDOWPLACEMENT");
    AddTwoSharedItems();
    AddItem(1, u"SetWindowPl", u"Declare Function SetWindowPlacement");
    Find(u"*placement*");
    LookAtBasketEntry(u"WINDOWPLACEMENT", u"Type WINDOWPLACEMENT");
    Screenshot("main-window", main_);
    CopyBasket();
    ShowMenu();
    AddDeclaration();
    SearchByType();
    ChooseColours();
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
    for (int entry = 0; entry < 2; ++entry) {
      const int before = EntryCount(In("lstAdd"));
      DoubleClickEntry(In("lstShare"), entry);
      WaitFor("the basket", [&] { return EntryCount(In("lstAdd")) == before + 1; });
    }
    Say("Added it and two of its shared items to the basket:");
    for (const auto& entry : Entries(In("lstAdd"))) Say("  " + ToUtf8(entry.substr(2)));
  }

  void Find(std::u16string_view pattern) {
    SetText(In("txtFind"), pattern);
    PressKey(In("txtFind"), VK_RETURN);
    WaitFor("hits", [this] { return Ask(In("lstFind"), LB_GETCOUNT) > 0; });
    Say("Found by \"" + ToUtf8(pattern) + "\":");
    for (const auto& hit : ListRows(In("lstFind"))) Say("  " + ToUtf8(hit));
  }

  void LookAtBasketEntry(std::u16string_view name, std::u16string_view code) {
    const auto entries = Entries(In("lstAdd"));
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.substr(2) == name; });
    if (found == entries.end()) throw std::runtime_error("not in the basket: " + ToUtf8(name));
    ClickEntry(In("lstAdd"), static_cast<int>(found - entries.begin()));
    WaitFor("the entry's code", [&] { return TextOf(In("RTB")).starts_with(code); });
  }

  void CopyBasket() {
    ClickToolbar(main_, "copy");
    std::u16string text;
    WaitFor("the clipboard", [&] { return !(text = ClipboardText()).empty(); });
    Say("Copied the basket:\n" + ToUtf8(text));
  }

  // The menu stays open for the picture, then is closed by its own key.
  void ShowMenu() {
    SetForegroundWindow(main_);
    PostMessageW(main_, WM_SYSCOMMAND, SC_KEYMENU, 'd');
    HWND menu = nullptr;
    WaitFor("the menu", [&] { return (menu = FindWindowW(L"#32768", nullptr)) != nullptr; });
    WaitFor("the menu", [&] { return IsWindowVisible(menu) != FALSE; });
    Screenshot("menu", main_);
    PressKey(main_, VK_ESCAPE);
    PressKey(main_, VK_ESCAPE);
    WaitFor("the menu's end", [&] { return !IsWindow(menu) || !IsWindowVisible(menu); });
  }

  void AddDeclaration() {
    ChooseMenu(main_, "mnuAdd");
    const HWND dialog = program_.Form("frmAdd");
    SetText(FindControl(dialog, "Text1"),
            u"' N\u00e1\u0161 \u010d\u00edta\u010d\r\nConst MY_TIMER As Long = 1 'first timer\r\n");
    Screenshot("add-item", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
    Say("Added a declaration of our own, MY_TIMER");
  }

  void SearchByType() {
    ClickToolbar(main_, "find");
    const HWND dialog = program_.Form("frmFind");
    WaitFor("the search dialog in front", [&] { return GetForegroundWindow() == dialog; });
    SetText(FindControl(dialog, "Text2"), u"WINDOWPLACEMENT");
    PressButton(FindControl(dialog, "Command2"));
    const HWND results = FindControl(dialog, "LV1");
    WaitFor("hits", [&] { return EntryCount(results) > 0; });
    ClickEntry(results, 0);
    WaitFor("the hit", [&] { return SelectedEntry(results) == 0; });
    Screenshot("search", dialog);
    Say("Searched for what uses WINDOWPLACEMENT; " +
        ToUtf8(TextOf(FindControl(dialog, "labCount"))));
    for (const auto& entry : Entries(results)) Say("  " + ToUtf8(entry.substr(2)));
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmFind"); });
  }

  void ChooseColours() {
    ClickToolbar(main_, "settings");
    const HWND settings = program_.Form("frmOptions");
    Screenshot("settings", settings);
    DoubleClick(FindControl(settings, "picColor1"), {8, 8});
    const HWND colours = program_.Dialog();
    Screenshot("colours", colours);
    PressInDialog(colours, IDCANCEL);
    PressButton(FindControl(settings, "Command2"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmOptions"); });
    Say("Looked at the colours and left them as they are");
  }

  void KeepTheItem() {
    ChooseMenu(main_, "mnuRename");
    Screenshot("rename", program_.Form("frmInput"));
    AnswerText(program_, u"Windows");
    PostMessageW(main_, WM_CLOSE, 0, 0);
    const HWND question = program_.Dialog();
    Screenshot("question", question);
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
  using namespace declarium;
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 3) {
    std::cerr << "usage: daily_job DECLARIUM.EXE TITLE\n";
    return 2;
  }
  try {
    const window_driver::SettingsPutAway settings;
    const std::wstring title = words[2];
    DailyJob(std::filesystem::path(words[1])).Do({title.begin(), title.end()});
  } catch (const std::exception& failure) {
    std::cerr << "daily_job: " << failure.what() << std::endl;
    return 1;
  }
  return 0;
}
