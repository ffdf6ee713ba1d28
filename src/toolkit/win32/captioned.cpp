#include "toolkit/win32/captioned.h"

namespace declarium::win32 {

Win32Frame::Win32Frame(Win32Form& form, const ControlDefinition& definition)
    : Win32Captioned(form, definition, {L"BUTTON", BS_GROUPBOX | WS_CLIPSIBLINGS}) {}

void Win32Frame::SendToBack() {
  SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::optional<LRESULT> Win32Frame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  // A group box leaves its inside to the form, which in turn leaves it to its controls.
  if (message == WM_ERASEBKGND) {
    RECT area{};
    GetClientRect(Handle(), &area);
    FillRect(reinterpret_cast<HDC>(wparam), &area, GetSysColorBrush(COLOR_BTNFACE));
    return 1;
  }
  return Win32Captioned::OnMessage(message, wparam, lparam);
}

}  // namespace declarium::win32
