// A short job in Declarium.exe as the add-in of the stand-in IDE, both driven from outside:
//
//   addin_job DECLARIUM.EXE TITLE
//
// The library of that title stands in the program's folder and holds the usual window functions.
// Every step is printed, and pictures are asked for (window/picture_job.h). Exit status 0 when
// every step did what it should. The program is registered for the machine and unregistered again;
// the user's settings of the program are put away meanwhile.
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <windows.h>

#include "host/ide_driver.h"
#include "text/text.h"
#include "window/driven_lists.h"
#include "window/driven_main_window.h"
#include "window/job.h"
#include "window/picture_job.h"
#include "window/window_driver.h"

namespace declarium {
namespace {

using namespace window_driver;

const std::string kAddIn = "Declarium.Connect";

void RunTask(const std::filesystem::path& program, const std::wstring& task) {
  std::string output;
  if (RunProgram(L"\"" + program.wstring() + L"\" " + task, output) != 0) {
    throw std::runtime_error(output);
  }
}

void ReplaceAll(std::string& text, std::string_view old, std::string_view replacement) {
  for (auto at = text.find(old); at != text.npos; at = text.find(old, at + replacement.size())) {
    text.replace(at, old.size(), replacement);
  }
}

// The program is an add-in for as long as this lives.
class Registration {
 public:
  // Wine looks classes up for the machine only.
  explicit Registration(std::filesystem::path program) : program_(std::move(program)) {
    RunTask(program_, L"/RegServer:machine");
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() {
    std::string output;
    RunProgram(L"\"" + program_.wstring() + L"\" /UnregServer:machine", output);
  }

 private:
  std::filesystem::path program_;
};

BOOL CALLBACK FindMainWindow(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || NameOf(window) != "frmMain") return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// The main window that some process shows; nullptr without one.
HWND ShownMainWindow() {
  HWND window = nullptr;
  EnumWindows(FindMainWindow, reinterpret_cast<LPARAM>(&window));
  return window;
}

class AddInJob {
 public:
  void Do(const std::u16string& library) {
    OpenProject();
    Must("connect " + kAddIn);
    Say("Connected the add-in: its button is in the toolbar, its entry in the Add-Ins menu");
    Must("click Standard");
    AttachToAddIn();
    ChooseLibrary(main_, library);
    Say("Clicked the button, which shows " + ToUtf8(TextOf(main_)));
    Add(2, u"POINTAPI", u"Type POINTAPI");
    Add(2, u"RECT", u"Type RECT");
    Add(2, u"WINDOWPL", u"Type WINDOWPLACEMENT");
    Add(1, u"GetWindowPl", u"Declare Function GetWindowPlacement");
    TakePicture("addin-basket", "*");
    Insert();
    TakePicture("addin", "*");
    InsertMissing();
    CompleteModule();
    CleanUp();
    Must("disconnect " + kAddIn);
    WaitFor("the add-in's end", [this] { return !program_->Runs(); });
    Say("Disconnected; the add-in has ended");
  }

 private:
  std::string Must(const std::string& command) {
    const auto answer = ide_.Tell(command);
    if (!answer.starts_with("ok")) throw std::runtime_error(command + ": " + answer);
    return answer;
  }

  void OpenProject() {
    Must("interfaces on");
    Must("project Project1");
    Must("component Project1 Module1 1");
    Must(
        "text Module1 Option Explicit\\n\\nPrivate Sub Remember(ByVal Window As Long)\\n"
        "\\tDim Placement As WINDOWPLACEMENT\\n\\tPlacement.Length = Len(Placement)\\n"
        "\\tGetWindowPlacement Window, Placement\\nEnd Sub");
    Must("component Project1 Module2 1");
    Must(
        "text Module2 Option Explicit\\n\\nPublic Sub Raise(ByVal Window As Long)\\n"
        "\\tIf IsIconic(Window) Then ShowWindow Window, SW_RESTORE\\n"
        "\\tSetForegroundWindow Window\\nEnd Sub");
    ShowModule("Module1");
    PrintModule("Module1", "The module before:");
  }

  void ShowModule(const std::string& name) {
    Must("pane " + name + " 1 40 1");
    Must("select " + name);
  }

  void AttachToAddIn() {
    WaitFor("the main window", [this] {
      main_ = ShownMainWindow();
      return main_ != nullptr;
    });
    DWORD process = 0;
    GetWindowThreadProcessId(main_, &process);
    program_ = std::make_unique<DrivenProgram>(process);
    PlaceBeside();
  }

  // Both windows are to be seen on one picture, the toolbar and the menu of the IDE above all.
  void PlaceBeside() const {
    const HWND ide = FindWindowW(L"StandInIde", nullptr);
    SetWindowPos(ide, nullptr, 0, 0, 800, 700, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(main_, nullptr, 470, 400, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }

  void Add(int kind, std::u16string_view beginning, std::u16string_view code) {
    TypeToItem(main_, kind, beginning, code);
    AddTypedItem(main_);
    Say("Typed \"" + ToUtf8(beginning) + "\" and added " + ToUtf8(code));
  }

  void Insert() {
    WaitFor("the toolbar's insert", [this] { return ToolbarEnabled(main_, "insert"); });
    ClickToolbar(main_, "insert");
    const HWND question = program_->Dialog();
    Say("Clicked insert, which asks: " + ToUtf8(MessageOf(question)));
    const auto before = ide_.Tell("lines Module1");
    PressInDialog(question, IDYES);
    WaitFor("the text", [&] { return ide_.Tell("lines Module1") != before; });
    PrintModule("Module1", "The module after:");
  }

  // The module has what was inserted; of what is added now and what that needs some is missing.
  void InsertMissing() {
    Add(1, u"GetWindowRect", u"Declare Function GetWindowRect");
    Add(1, u"MonitorFromRe", u"Declare Function MonitorFromRect");
    WaitFor("the toolbar's insert-missing",
            [this] { return ToolbarEnabled(main_, "insert-missing"); });
    ClickToolbar(main_, "insert-missing");
    Say("Pressed the button that inserts what is missing, which shows what it would do");
    AgreeToPlan("Module1", "insert-missing");
    PrintModule("Module1", "The module with what was missing:");
  }

  // The basket has nothing of what the other module's code uses.
  void CompleteModule() {
    ShowModule("Module2");
    PrintModule("Module2", "Another module, whose code uses what nothing declares:");
    ChooseMenu(main_, "mnuCompleteModule");
    Say("Chose to complete the module, which shows what it found");
    AgreeToPlan("Module2", "complete-module");
    PrintModule("Module2", "The module with what its code uses:");
  }

  void AgreeToPlan(const std::string& module, const std::string& picture) {
    const HWND plan = program_->Form("frmPlan");
    TakePicture(picture, plan);
    const auto before = ide_.Tell("lines " + module);
    PressButton(FindControl(plan, "Command1"));
    WaitFor("the text", [&] { return ide_.Tell("lines " + module) != before; });
  }

  // One more module declares and uses what the others have, and some of it otherwise.
  void CleanUp() {
    Must("component Project1 Windows 1");
    Must(
        "text Windows Option Explicit\\n\\nPrivate Type POINTAPI\\n\\tx As Long\\n\\ty As "
        "Long\\nEnd Type\\nPrivate Const SW_HIDE = 5\\nPrivate Const SW_SHOW = 5\\n"
        "Private Declare Function ShowWindow Lib \"user32\" (hWnd As Long, ByVal nCmdShow As "
        "Integer) As Long\\nPrivate Declare Function GetTickCount Lib \"kernel32\" () As Long\\n\\n"
        "Sub Hide(ByVal Window As Long)\\n\\tDim Place As POINTAPI\\n\\tShowWindow Window, "
        "SW_HIDE\\nEnd Sub");
    ChooseMenu(main_, "mnuProject");
    const HWND form = program_->Form("frmProject");
    Say("Chose Projekt..., which shows every declaration of the project");
    // To the constant that the library has otherwise.
    const HWND list = FindControl(form, "LV1");
    PressKey(list, VK_END);
    for (int row = 0; row < 3; ++row) PressKey(list, VK_UP);
    WaitFor("the row", [&] { return TextOf(FindControl(form, "labAfter")).starts_with(u"Zmení"); });
    TakePicture("project", form);
    PressButton(FindControl(form, "Command1"));
    const HWND count = FindControl(form, "labCount");
    while (const HWND question = QuestionBefore(count, u"Hotovo")) {
      Say("Asked: " + ToUtf8(MessageOf(question)));
      PressInDialog(question, IDYES);
    }
    Say(ToUtf8(TextOf(count)));
    TakePicture("project-done", form);
    PressButton(FindControl(form, "Command2"));
    WaitFor("the window's end", [&] { return !program_->FindForm("frmProject"); });
    PrintModule("Windows", "The module that was added:");
  }

  // The next question; nullptr when the label says that there is none any more.
  HWND QuestionBefore(HWND label, std::u16string_view end) const {
    HWND question = nullptr;
    WaitFor("a question or the end", [&] {
      question = program_->FindDialog();
      return question != nullptr || TextOf(label).starts_with(end);
    });
    return question;
  }

  void PrintModule(const std::string& name, const std::string& heading) {
    auto text = Must("lines " + name).substr(3);
    ReplaceAll(text, "\\n", "\n  ");
    ReplaceAll(text, "\\t", "    ");
    Say(heading + "\n  " + text);
  }

  IdeProcess ide_;
  std::unique_ptr<DrivenProgram> program_;
  HWND main_ = nullptr;
};

}  // namespace
}  // namespace declarium

int main() {
  return declarium::window_driver::RunJob("addin_job", "DECLARIUM.EXE TITLE",
                                          [](const auto& program, const auto& title) {
                                            const declarium::Registration registration(program);
                                            declarium::AddInJob().Do(title);
                                          });
}
