// Does in Declarium.exe what the guide says, from outside, and asks for the guide's pictures
// (window/picture_job.h):
//
//   guide_pictures DECLARIUM.EXE SOURCE.BAS
//
// The bundled library "Win32 API" stands in the program's folder. SOURCE.BAS is imported. Exit
// status 0 when every step did what it should. The user's settings of the program are put away
// meanwhile.
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
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

// The declarations that the guide's first library begins with.
constexpr std::u16string_view kFirstDeclarations =
    u"Declare Function GetCursorPos Lib \"user32\" (lpPoint As POINTAPI) As Long\r\n"
    u"Type POINTAPI\r\n"
    u"    x As Long\r\n"
    u"    y As Long\r\n"
    u"End Type\r\n"
    u"Const VK_LBUTTON = &H1 'ľavé tlačidlo myši\r\n";

// Those of examples/FaultyDeclares.bas.
constexpr std::u16string_view kFaultyDeclarations =
    u"Declare Sub Sleep Lib \"kernel32\" (dwMilliseconds As Long)\r\n"
    u"Declare Function FindWindow Lib \"user32\" (ByVal lpClassName As String, "
    u"ByVal lpWindowName As String) As Long\r\n"
    u"Declare Function IsWindow Lib \"user32\" (ByVal hWnd As Long) As Boolean\r\n"
    u"Declare Function GetWindowText Lib \"user32\" Alias \"GetWindowTextA\" "
    u"(ByVal hWnd As Long, ByVal lpString As String) As Long\r\n"
    u"Const LOW_WORD As Long = &HFFFF\r\n";

// As file dialogs take it.
std::filesystem::path FullPath(const std::filesystem::path& path) {
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
    Colors();
    Check();
    Close();
  }

 private:
  [[nodiscard]] HWND In(std::string_view name) const { return FindControl(main_, name); }
  // With the caret behind the text, where it hides no letter.
  static void Fill(HWND box, std::u16string_view text) {
    SetText(box, text);
    PostMessageW(box, EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
  }

  void FirstLibrary() {
    ChooseMenu(main_, "mnuNew");
    const HWND title = program_.Form("frmInput");
    Fill(FindControl(title, "Text1"), u"Moje API");
    TakePicture("new-library", title);
    AnswerText(program_, u"Moje API");
    AnswerFile(program_, program_.Dialog(), folder_ / "moje.api");
    WaitFor("the new library", [this] { return TextOf(main_).starts_with(u"Moje API"); });
    AddDeclarations();
    AddTypedItemOf(1, u"GetC", u"Declare Function GetCursorPos");
    AddSharedItem(main_, 0);
    TakePicture("first-library", main_);
    ClickToolbar(main_, "copy");
    ClickToolbar(main_, "save");
  }

  void AddDeclarations() {
    ChooseMenu(main_, "mnuAdd");
    const HWND dialog = program_.Form("frmAdd");
    Fill(FindControl(dialog, "Text1"), kFirstDeclarations);
    TakePicture("add-item", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
  }

  void AddTypedItemOf(int kind, std::u16string_view beginning, std::u16string_view code) {
    TypeToItem(main_, kind, beginning, code);
    AddTypedItem(main_);
  }

  void Import(const std::filesystem::path& source) {
    ChooseMenu(main_, "mnuImport");
    AnswerFile(program_, program_.Dialog(), source);
    const HWND question = program_.Dialog();
    TakePicture("import-question", question);
    PressInDialog(question, IDYES);
    WaitFor("the imported items", [this] { return Ask(In("lstDeclare"), LB_GETCOUNT) > 10; });
    OpenMenu(main_, 'd');
    TakePicture("menu", main_);
    ShutMenus(main_);
    AskToSave();
  }

  // Closing asks about the changes.
  void AskToSave() {
    PostMessageW(main_, WM_CLOSE, 0, 0);
    const HWND question = program_.Dialog();
    TakePicture("save-question", question);
    PressInDialog(question, IDCANCEL);
    Save();
  }

  void Bundled() {
    ChooseLibrary(main_, u"Win32 API");
    AddTypedItemOf(2, u"WINDOWPL", u"Type WINDOWPLACEMENT");
    AddTypedItemOf(1, u"SetWindowPl", u"Declare Function SetWindowPlacement");
    AddTypedItemOf(0, u"SW_SHOWNOR", u"Const SW_SHOWNORMAL");
    TypeToItem(main_, 1, u"GetWindowPl", u"Declare Function GetWindowPlacement");
    FindNames(main_, u"w*placement");
    const int record = BasketEntryOf(main_, u"WINDOWPLACEMENT");
    ClickEntry(In("lstAdd"), record);
    WaitFor("the record", [this] { return TextOf(In("RTB")).starts_with(u"Type WINDOWPL"); });
    TakePicture("main-window", main_);
    ShowPopup(record);
    OpenMenu(main_, 'p');
    TakePicture("help-menu", main_);
    ShutMenus(main_);
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
    AwaitOpenMenu();
    TakePicture("basket-menu", main_);
    ShutMenus(main_);
    SetCursorPos(4, 4);
  }

  void Search() {
    const HWND dialog = SearchForUsesOf(program_, main_, u"WINDOWPLACEMENT");
    TakePicture("search", dialog);
    CloseSearch(program_, dialog);
  }

  void Colors() {
    ClickToolbar(main_, "settings");
    const HWND settings = program_.Form("frmOptions");
    TakePicture("options", settings);
    PressButton(FindControl(settings, "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmOptions"); });
  }

  void Check() {
    ChooseLibrary(main_, u"Moje API");
    ChooseMenu(main_, "mnuAdd");
    SetText(FindControl(program_.Form("frmAdd"), "Text1"), kFaultyDeclarations);
    PressButton(FindControl(program_.Form("frmAdd"), "Command1"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmAdd"); });
    ChooseMenu(main_, "mnuCheck");
    const HWND dialog = program_.Form("frmCheck");
    WaitFor("the findings", [&] { return !Entries(FindControl(dialog, "LV1")).empty(); });
    TakePicture("check", dialog);
    PressButton(FindControl(dialog, "Command1"));
    WaitFor("the item", [this] { return TextOf(In("RTB")).starts_with(u"Declare "); });
    PressButton(FindControl(dialog, "Command2"));
    WaitFor("the dialog's end", [this] { return !program_.FindForm("frmCheck"); });
    Save();
  }

  void Save() {
    const auto file = folder_ / "moje.api";
    const auto before = std::filesystem::last_write_time(file);
    ClickToolbar(main_, "save");
    PostMessageW(In("Toolbar1"), WM_MOUSELEAVE, 0, 0);
    WaitFor("the saved library", [&] { return std::filesystem::last_write_time(file) != before; });
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
  return declarium::window_driver::RunJob(
      "guide_pictures", "DECLARIUM.EXE SOURCE.BAS", [](const auto& program, const auto& source) {
        declarium::GuidePictures(declarium::FullPath(program)).Do(declarium::FullPath(source));
      });
}
