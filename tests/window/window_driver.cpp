#include "window/window_driver.h"

#include <chrono>
#include <stdexcept>
#include <thread>

namespace declarium::window_driver {
namespace {

constexpr auto kLimit = std::chrono::seconds(20);
constexpr auto kPause = std::chrono::milliseconds(5);
constexpr UINT kAnswerLimit = 20000;  // milliseconds
constexpr const wchar_t* kDialogClass = L"#32770";
constexpr int kMessageText = 0xFFFF;  // a message box's static control
// A file dialog's file name: an edit control, or a combo box in which one is.
constexpr int kFileNames[] = {0x480, 0x47C};

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

struct Search {
  const std::function<bool(HWND)>& wanted;
  HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM lparam) {
  auto& search = *reinterpret_cast<Search*>(lparam);
  if (!search.wanted(window)) return TRUE;
  search.found = window;
  return FALSE;
}

void ClickWith(UINT down, UINT up, WPARAM button, HWND window, POINT at) {
  const LPARAM place = MAKELPARAM(at.x, at.y);
  PostMessageW(window, down, button, place);
  PostMessageW(window, up, 0, place);
}

HWND FileNameOf(HWND dialog) {
  for (const int id : kFileNames) {
    if (const HWND control = GetDlgItem(dialog, id)) return control;
  }
  throw std::runtime_error("the dialog takes no file name");
}

}  // namespace

bool Eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kLimit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

void WaitFor(const std::string& what, const std::function<bool()>& condition) {
  if (!Eventually(condition)) throw std::runtime_error("waited in vain for " + what);
}

LRESULT Ask(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL, kAnswerLimit, &answer);
  return static_cast<LRESULT>(answer);
}

std::string NameOf(HWND window) {
  const auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(window, L"Name")));
  wchar_t name[256] = L"";
  const UINT length = atom == 0 ? 0 : GlobalGetAtomNameW(atom, name, 256);
  return {name, name + length};
}

std::u16string TextOf(HWND window) {
  std::u16string text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 1, u'\0');
  const auto size = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(size));
  return text;
}

void SetText(HWND window, std::u16string_view text) {
  const std::u16string terminated(text);
  Ask(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(terminated.c_str()));
}

HWND FindControl(HWND form, std::string_view name) {
  const std::function<bool(HWND)> wanted = [&](HWND window) { return NameOf(window) == name; };
  Search search{wanted};
  EnumChildWindows(form, Look, reinterpret_cast<LPARAM>(&search));
  if (!search.found) throw std::runtime_error("no control " + std::string(name));
  return search.found;
}

void Type(HWND window, std::u16string_view text) {
  for (const char16_t character : text) PostMessageW(window, WM_CHAR, character, 1);
}

void PressKey(HWND window, int key) {
  PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), static_cast<LPARAM>(0xC0000001));
}

void Click(HWND window, POINT at) {
  ClickWith(WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON, window, at);
}

void DoubleClick(HWND window, POINT at) {
  Click(window, at);
  ClickWith(WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON, window, at);
}

void RightClick(HWND window, POINT at) {
  ClickWith(WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON, window, at);
}

void PressButton(HWND button) {
  PostMessageW(button, BM_CLICK, 0, 0);
}

bool IsChecked(HWND box) {
  return Ask(box, BM_GETCHECK) == BST_CHECKED;
}

Standstill::Standstill(HWND window)
    : thread_(OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(window, nullptr))) {
  if (!thread_ || SuspendThread(thread_.Get()) == static_cast<DWORD>(-1)) {
    throw std::runtime_error("the program's thread cannot be stopped");
  }
}

Standstill::~Standstill() {
  ResumeThread(thread_.Get());
}

DrivenProgram::DrivenProgram(const std::filesystem::path& program, const std::wstring& arguments,
                             const std::filesystem::path& folder) {
  std::wstring command_line = L"\"" + program.wstring() + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      (folder.empty() ? program.parent_path() : folder).c_str(), &startup,
                      &process)) {
    throw std::runtime_error("cannot start " + program.string());
  }
  CloseHandle(process.hThread);
  process_.Reset(process.hProcess);
  id_ = process.dwProcessId;
}

DrivenProgram::DrivenProgram(DWORD id)
    : process_(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION, FALSE, id)),
      id_(id) {
  if (!process_) throw std::runtime_error("no process " + std::to_string(id));
}

DrivenProgram::~DrivenProgram() {
  if (id_ != GetCurrentProcessId()) {
    if (Runs()) TerminateProcess(process_.Get(), 3);
    WaitForSingleObject(process_.Get(), kAnswerLimit);
  }
}

HWND DrivenProgram::FindWindow(const std::function<bool(HWND)>& wanted) const {
  const std::function<bool(HWND)> own = [&](HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == id_ && IsWindowVisible(window) && wanted(window);
  };
  Search search{own};
  EnumWindows(Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND DrivenProgram::FindForm(std::string_view name) const {
  return FindWindow([&](HWND window) { return NameOf(window) == name; });
}

HWND DrivenProgram::Form(std::string_view name) const {
  HWND form = nullptr;
  WaitFor("the form " + std::string(name), [&] { return (form = FindForm(name)) != nullptr; });
  return form;
}

HWND DrivenProgram::FindDialog(HWND except) const {
  return FindWindow(
      [&](HWND window) { return window != except && ClassOf(window) == kDialogClass; });
}

HWND DrivenProgram::Dialog(HWND except) const {
  HWND dialog = nullptr;
  WaitFor("a dialog", [&] { return (dialog = FindDialog(except)) != nullptr; });
  return dialog;
}

bool DrivenProgram::Runs() const {
  return WaitForSingleObject(process_.Get(), 0) == WAIT_TIMEOUT;
}

int DrivenProgram::WaitForEnd() const {
  WaitFor("the program's end", [this] { return !Runs(); });
  DWORD status = 0;
  GetExitCodeProcess(process_.Get(), &status);
  return static_cast<int>(status);
}

std::u16string MessageOf(HWND dialog) {
  return TextOf(GetDlgItem(dialog, kMessageText));
}

void PressInDialog(HWND dialog, int button) {
  const HWND pressed = GetDlgItem(dialog, button);
  if (!pressed) throw std::runtime_error("the dialog has no button " + std::to_string(button));
  PressButton(pressed);
  WaitFor("the dialog's end", [&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); });
}

void AnswerFile(const DrivenProgram& program, HWND dialog, const std::filesystem::path& file) {
  SetText(FileNameOf(dialog), file.u16string());
  PressButton(GetDlgItem(dialog, IDOK));
  WaitFor("the file dialog's end", [&] {
    return !IsWindow(dialog) || !IsWindowVisible(dialog) || program.FindDialog(dialog);
  });
}

}  // namespace declarium::window_driver
