// Does in Declarium.exe what the guide tells, from outside, and asks for the guide's pictures
// (window/picture_job.h):
//
//   guide_pictures DECLARIUM.EXE SOURCE.BAS
//
// The bundled library "Win32 API" stands in the program's folder. SOURCE.BAS is imported. Exit
// status 0 when every step did what it should. The user's settings of the program are put away
// meanwhile.
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
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

// The declarations that the guide's first library begins with.
constexpr std::u16string_view kFirstDeclarations =
    u"Declare Function GetCursorPos Lib \"user32\" (lpPoint As POINTAPI) As Long\r\n"
    u"Type POINTAPI\r\n"
    u"    x As Long\r\n"
    u"    y As Long\r\n"
    u"End Type\r\n"
    u"Const VK_LBUTTON = &H1 'ľavé tlačidlo myši\r\n";

// As file dialogs take it.
std::filesystem::path FullPath(const wchar_t* path) {
  return std::filesystem::absolute(path).make_preferred();
}

class GuidePictures {
 public:
  explicit GuidePictures(const std::filesystem::path& program)
      : folder_(program.parent_path()), program_(program) {}

  void Do(const std::filesystem::path& source) {
    main_ = program_.Form("frmMain");
    TakePicture("splash", "*");
    WaitFor("the splash window's end", [this] { return !program_.FindForm("frmSplash"); });
    FirstLibrary();
    Import(source);
    Bundled();
    Search();
    Colours();
    Close();
  }

 private:
  [[nodiscard]] HWND In(std::string_view name) const { return FindControl(main_, name); }
  static void Picture(const std::string& name, HWND window) {
    TakePicture(name, ToUtf8(TextOf(window)));
  }

  // With the caret behind the text, where it hides no letter.
  static void Fill(HWND box, std::u16string_view text) {
    SetText(box, text);
    PostMessageW(box, EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
  }

  void FirstLibrary() {
    ChooseMenu(main_, "mnuNew");
    const HWND title = program_.Form("frmInput");
    Fill(FindControl(title, "Text1"), u"Moje API");
    Picture("new-library", title);
    AnswerText(program_, u"Moje API");
    AnswerFile(program_, program_.Dialog(), folder_ / "moje.api");
    WaitFor("the new library", [this] { return TextOf(main_).starts_with(u"Moje API"); });
    AddDeclarations();
    AddTypedItemOf(1, u"GetC", u"Declare Function GetCursorPos");
    AddShared(0);
    Picture("first-library", main_);
    ClickToolbar(main_, "copy");
    ClickToolbar(main_, "save");
  }

  void AddDeclarations() {
    ChooseMenu(main_, "mnuAdd");
    const HWND dialog = program_.Form("frmAdd");
    Fill(FindControl(dialog, "Text1"), kFirstDeclarations);
    Picture("add-item", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
  }

  void AddTypedItemOf(int kind, std::u16string_view beginning, std::u16string_view code) {
    TypeToItem(main_, kind, beginning, code);
    AddTypedItem(main_);
  }

  void AddShared(int entry) {
    const int before = EntryCount(In("lstAdd"));
    DoubleClickEntry(In("lstShare"), entry);
    WaitFor("the basket", [&] { return EntryCount(In("lstAdd")) == before + 1; });
  }

  void Import(const std::filesystem::path& source) {
    ChooseMenu(main_, "mnuImport");
    AnswerFile(program_, program_.Dialog(), source);
    const HWND question = program_.Dialog();
    Picture("import-question", question);
    PressInDialog(question, IDYES);
    WaitFor("the imported items", [this] { return Ask(In("lstDeclare"), LB_GETCOUNT) > 10; });
    Picture("menu", OpenMenu('d', "menu"));
    ShutMenu();
    AskToSave();
  }

  // Opens the menu of that access key.
  HWND OpenMenu(char key, const std::string& what) {
    SetForegroundWindow(main_);
    PostMessageW(main_, WM_SYSCOMMAND, SC_KEYMENU, key);
    WaitFor(what, [] {
      const HWND menu = FindWindowW(L"#32768", nullptr);
      return menu != nullptr && IsWindowVisible(menu);
    });
    return main_;
  }

  void ShutMenu() {
    PressKey(main_, VK_ESCAPE);
    PressKey(main_, VK_ESCAPE);
    WaitFor("the menu's end", [] {
      const HWND menu = FindWindowW(L"#32768", nullptr);
      return menu == nullptr || !IsWindowVisible(menu);
    });
  }

  // Closing asks about the changes.
  void AskToSave() {
    PostMessageW(main_, WM_CLOSE, 0, 0);
    const HWND question = program_.Dialog();
    Picture("save-question", question);
    PressInDialog(question, IDCANCEL);
    const auto file = folder_ / "moje.api";
    const auto before = std::filesystem::file_size(file);
    ClickToolbar(main_, "save");
    PostMessageW(In("Toolbar1"), WM_MOUSELEAVE, 0, 0);
    WaitFor("the saved library", [&] { return std::filesystem::file_size(file) > before; });
  }

  void Bundled() {
    ChooseLibrary(main_, u"Win32 API");
    AddTypedItemOf(2, u"WINDOWPL", u"Type WINDOWPLACEMENT");
    AddTypedItemOf(1, u"SetWindowPl", u"Declare Function SetWindowPlacement");
    AddTypedItemOf(0, u"SW_SHOWNOR", u"Const SW_SHOWNORMAL");
    TypeToItem(main_, 1, u"GetWindowPl", u"Declare Function GetWindowPlacement");
    SetText(In("txtFind"), u"w*placement");
    PressKey(In("txtFind"), VK_RETURN);
    WaitFor("hits", [this] { return Ask(In("lstFind"), LB_GETCOUNT) > 0; });
    const int record = EntryOf(u"3 WINDOWPLACEMENT");
    ClickEntry(In("lstAdd"), record);
    WaitFor("the record", [this] { return TextOf(In("RTB")).starts_with(u"Type WINDOWPL"); });
    Picture("main-window", main_);
    ShowPopup(record);
    Picture("help-menu", OpenMenu('p', "the help menu"));
    ShutMenu();
  }

  [[nodiscard]] int EntryOf(std::u16string_view entry) const {
    const auto entries = Entries(In("lstAdd"));
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i] == entry) return static_cast<int>(i);
    }
    throw std::runtime_error("not in the basket: " + ToUtf8(entry));
  }

  // The popup menu opens where the mouse pointer is.
  void ShowPopup(int entry) {
    constexpr int kRowHeight = 17;
    const HWND basket = In("lstAdd");
    POINT at{40, 8 + entry * kRowHeight};
    POINT on_screen = at;
    ClientToScreen(basket, &on_screen);
    SetCursorPos(on_screen.x, on_screen.y);
    RightClick(basket, at);
    WaitFor("the popup menu", [] {
      const HWND menu = FindWindowW(L"#32768", nullptr);
      return menu != nullptr && IsWindowVisible(menu);
    });
    Picture("basket-menu", main_);
    ShutMenu();
    SetCursorPos(4, 4);
  }

  void Search() {
    ClickToolbar(main_, "find");
    const HWND dialog = program_.Form("frmFind");
    WaitFor("the search dialog in front", [&] { return GetForegroundWindow() == dialog; });
    SetText(FindControl(dialog, "Text2"), u"WINDOWPLACEMENT");
    PressButton(FindControl(dialog, "Command2"));
    const HWND results = FindControl(dialog, "LV1");
    WaitFor("hits", [&] { return EntryCount(results) > 0; });
    ClickEntry(results, 0);
    WaitFor("the hit", [&] { return SelectedEntry(results) == 0; });
    Picture("search", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmFind"); });
  }

  void Colours() {
    ClickToolbar(main_, "settings");
    const HWND settings = program_.Form("frmOptions");
    Picture("options", settings);
    PressButton(FindControl(settings, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmOptions"); });
  }

  void Close() {
    PostMessageW(main_, WM_CLOSE, 0, 0);
    Say("Closed; exit status " + std::to_string(program_.WaitForEnd()));
  }

  std::filesystem::path folder_;
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
    std::cerr << "usage: guide_pictures DECLARIUM.EXE SOURCE.BAS\n";
    return 2;
  }
  try {
    const window_driver::SettingsPutAway settings;
    GuidePictures(FullPath(words[1])).Do(FullPath(words[2]));
  } catch (const std::exception& failure) {
    std::cerr << "guide_pictures: " << failure.what() << std::endl;
    return 1;
  }
  return 0;
}
