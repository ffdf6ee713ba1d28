// Drives a program from outside: starts it, finds its windows by the names that they carry, and
// uses them with the messages that a user's keys and mouse become.
//
// Whatever acts posts its messages and returns; whatever waits polls, and throws std::runtime_error
// when the limit of twenty seconds has passed. Positions in lists count from 0.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

#include "win32/unique_handle.h"

namespace declarium::window_driver {

// Whether the condition came true within the limit.
[[nodiscard]] bool Eventually(const std::function<bool()>& condition);

// Throws, naming `what`, when the condition does not come true within the limit.
void WaitFor(const std::string& what, const std::function<bool()>& condition);

// A message whose answer is needed; 0 when the program does not answer within the limit.
LRESULT Ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0);

// The name in the window's property, empty without one.
[[nodiscard]] std::string NameOf(HWND window);
[[nodiscard]] std::u16string TextOf(HWND window);
void SetText(HWND window, std::u16string_view text);

// The control of a form by its name.
[[nodiscard]] HWND FindControl(HWND form, std::string_view name);

// Characters and keys as if the window had the focus; `key` is a virtual-key code.
void Type(HWND window, std::u16string_view text);
void PressKey(HWND window, int key);
// At a place in the window's inner area, in physical pixels.
void Click(HWND window, POINT at);
void DoubleClick(HWND window, POINT at);
void RightClick(HWND window, POINT at);
// A command button or check box.
void PressButton(HWND button);
[[nodiscard]] bool IsChecked(HWND box);

// While it lives, the window's thread stands still: what is posted meanwhile is in its queue, in
// this order, when it goes on. Nothing that waits for an answer may be called.
class Standstill {
 public:
  explicit Standstill(HWND window);
  Standstill(const Standstill&) = delete;
  Standstill& operator=(const Standstill&) = delete;
  ~Standstill();

 private:
  win32::UniqueKernelObject thread_;
};

// A started program. It is ended with the object when it still runs.
class DrivenProgram {
 public:
  // `arguments` are appended to the command line as they stand. Without a folder it starts in its
  // own.
  explicit DrivenProgram(const std::filesystem::path& program, const std::wstring& arguments = {},
                         const std::filesystem::path& folder = {});
  // A program that somebody else started, by its process id; it may be this one, which is not
  // ended.
  explicit DrivenProgram(DWORD id);
  DrivenProgram(const DrivenProgram&) = delete;
  DrivenProgram& operator=(const DrivenProgram&) = delete;
  ~DrivenProgram();

  // The visible form of that name: waits for it, or looks for it now (nullptr when there is none).
  [[nodiscard]] HWND Form(std::string_view name) const;
  [[nodiscard]] HWND FindForm(std::string_view name) const;

  // The topmost dialog of the system's own (messages, files, colors): waits for one other than
  // `except`, or looks for it now.
  [[nodiscard]] HWND Dialog(HWND except = nullptr) const;
  [[nodiscard]] HWND FindDialog(HWND except = nullptr) const;

  // The first visible window in front that is wanted, nullptr when there is none.
  [[nodiscard]] HWND FindWindow(const std::function<bool(HWND)>& wanted) const;

  [[nodiscard]] bool Runs() const;
  // Waits for the end and returns the exit status.
  [[nodiscard]] int WaitForEnd() const;

 private:
  win32::UniqueKernelObject process_;
  DWORD id_ = 0;
};

// What a message box says.
[[nodiscard]] std::u16string MessageOf(HWND dialog);
// Presses a button of a dialog (IDYES ...), and waits until the dialog is gone.
void PressInDialog(HWND dialog, int button);
// Gives a file to a file dialog and waits until it is gone or asks whether to replace the file.
void AnswerFile(const DrivenProgram& program, HWND dialog, const std::filesystem::path& file);

}  // namespace declarium::window_driver
