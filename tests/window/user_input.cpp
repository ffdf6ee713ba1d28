#include "window/user_input.h"

#include <iterator>

#include "window/window_driver.h"

namespace declarium::window_driver {
namespace {

void SendKey(int key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(key);
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

void SendButton(DWORD flags) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

}  // namespace

void BringToFront(HWND window) {
  SetForegroundWindow(window);
  WaitFor("the window in front", [window] { return GetForegroundWindow() == window; });
  Ask(window, WM_NULL);
}

void PressTogether(std::initializer_list<int> keys) {
  for (const int key : keys) SendKey(key, 0);
  for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) SendKey(*key, KEYEVENTF_KEYUP);
}

void MovePointer(HWND window, POINT at) {
  ClientToScreen(window, &at);
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  // The whole screen is 65 536 units wide and high; a pixel's middle is meant.
  input.mi.dx = (at.x * 0x10000 + 0x8000) / GetSystemMetrics(SM_CXSCREEN);
  input.mi.dy = (at.y * 0x10000 + 0x8000) / GetSystemMetrics(SM_CYSCREEN);
  SendInput(1, &input, sizeof input);
  WaitFor("the pointer", [&] {
    POINT now{};
    GetCursorPos(&now);
    return now.x == at.x && now.y == at.y;
  });
  Ask(window, WM_NULL);
}

void HoldLeftButton() {
  SendButton(MOUSEEVENTF_LEFTDOWN);
}

void WaitForCapture(HWND window) {
  WaitFor("the capture of the pointer", [window] {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndCapture == window;
  });
}

void ReleaseLeftButton() {
  SendButton(MOUSEEVENTF_LEFTUP);
}

void Drag(HWND from, POINT start, HWND to, POINT end) {
  MovePointer(from, start);
  HoldLeftButton();
  // Leaves the place first, as a hand does, so that the drag begins where it was pressed.
  MovePointer(from, {start.x + 8, start.y});
  MovePointer(to, end);
  ReleaseLeftButton();
  Ask(to, WM_NULL);
}

}  // namespace declarium::window_driver
