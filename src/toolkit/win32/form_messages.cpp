// What a form's window does with its messages, one function each.

#include <algorithm>
#include <iterator>

#include "toolkit/win32/dpi.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/icons.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/timer.h"
#include "toolkit/win32/toolbar.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/widget.h"
#include "win32/system.h"

namespace declarium::win32 {

const Win32Form::Entry Win32Form::kHandlers[] = {
    {WM_COMMAND, &Win32Form::OnCommand},
    {WM_NOTIFY, &Win32Form::OnNotify},
    {WM_SIZE, &Win32Form::OnSize},
    {WM_GETMINMAXINFO, &Win32Form::OnGetMinMaxInfo},
    {WM_ACTIVATE, &Win32Form::OnActivate},
    {WM_SETFOCUS, &Win32Form::OnSetFocus},
    {WM_CLOSE, &Win32Form::OnClose},
    {WM_QUERYENDSESSION, &Win32Form::OnQueryEndSession},
    {WM_ENDSESSION, &Win32Form::OnEndSession},
    {WM_TIMER, &Win32Form::OnTimer},
    {WM_INITMENUPOPUP, &Win32Form::OnInitMenuPopup},
    {WM_SETCURSOR, &Win32Form::OnSetCursor},
    {WM_CTLCOLORSTATIC, &Win32Form::OnControlColor},
    {WM_CTLCOLORBTN, &Win32Form::OnControlColor},
    {WM_DPICHANGED, &Win32Form::OnDpiChanged},
    {WM_SETTINGCHANGE, &Win32Form::OnSettingsChanged},
    {WM_SYSCOLORCHANGE, &Win32Form::OnSettingsChanged},
};

const wchar_t* Win32Form::WindowClass() {
  static const wchar_t* const name = [] {
    WNDCLASSEXW native{};
    native.cbSize = sizeof native;
    native.lpfnWndProc = Procedure;
    native.hInstance = GetModuleHandleW(nullptr);
    native.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    // Of the class rather than of each window, which would have to notify the window manager.
    const int dpi = Screens().SystemDpi();
    static const UniqueIcon large = DrawIconPicture(Icon::kApplication, ToPhysical(32, dpi));
    static const UniqueIcon small = DrawIconPicture(Icon::kApplication, SmallIconSize(dpi));
    native.hIcon = large.Get();
    native.hIconSm = small.Get();
    native.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    native.lpszClassName = L"DeclariumForm";
    RegisterClassExW(&native);
    return native.lpszClassName;
  }();
  return name;
}

LRESULT CALLBACK Win32Form::Procedure(HWND window, UINT message, WPARAM wparam,
                                      LPARAM lparam) noexcept {
  auto* form = reinterpret_cast<Win32Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!form) return DefWindowProcW(window, message, wparam, lparam);
  // The form may be gone when it has answered.
  Boundary& boundary = form->toolkit_.boundary;
  // What a failed handler was to answer is not left to the system, which would close the window.
  std::optional<LRESULT> answer = 0;
  boundary.Run([&] { answer = form->Answer(message, wparam, lparam); });
  return answer ? *answer : DefWindowProcW(window, message, wparam, lparam);
}

std::optional<LRESULT> Win32Form::Answer(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto entry = std::ranges::find(kHandlers, message, &Entry::message);
  if (entry == std::end(kHandlers)) return std::nullopt;
  return (this->*entry->handler)(wparam, lparam);
}

std::optional<LRESULT> Win32Form::OnCommand(WPARAM wparam, LPARAM lparam) {
  if (!IsLoaded() || !TakesInput()) return 0;
  if (lparam == 0) {
    if (Win32MenuItem* item = menus_->WithId(LOWORD(wparam))) item->on_click.Raise();
    return 0;
  }
  Widget* widget = WidgetOf(reinterpret_cast<HWND>(lparam));
  if (auto* toolbar = dynamic_cast<Win32Toolbar*>(widget)) {
    toolbar->OnButton(LOWORD(wparam));
  } else if (widget) {
    widget->OnCommand(HIWORD(wparam));
  }
  return 0;
}

std::optional<LRESULT> Win32Form::OnNotify(WPARAM, LPARAM lparam) {
  auto& header = *reinterpret_cast<NMHDR*>(lparam);
  Widget* widget = WidgetOf(header.hwndFrom);
  return widget ? widget->OnNotify(header) : std::nullopt;
}

std::optional<LRESULT> Win32Form::OnSize(WPARAM wparam, LPARAM) {
  if (IsLoaded() && wparam != SIZE_MINIMIZED) RaiseResizeIfChanged();
  return 0;
}

std::optional<LRESULT> Win32Form::OnGetMinMaxInfo(WPARAM, LPARAM lparam) {
  if (minimum_size_ == Size{}) return std::nullopt;
  const Size outer = OuterPhysical(minimum_size_);
  reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {outer.width, outer.height};
  return 0;
}

std::optional<LRESULT> Win32Form::OnActivate(WPARAM wparam, LPARAM) {
  if (LOWORD(wparam) == WA_INACTIVE || HIWORD(wparam) != 0 || !visible_) return 0;
  toolkit_.FormActivated(*this);
  if (visible_) focus_.Take();
  return 0;
}

std::optional<LRESULT> Win32Form::OnSetFocus(WPARAM, LPARAM) {
  if (visible_) focus_.Take();
  return 0;
}

// Other programs can ask a window to close that has a dialog open, whose entries would be lost.
std::optional<LRESULT> Win32Form::OnClose(WPARAM, LPARAM) {
  if (TakesInput()) {
    Unload(UnloadReason::kUser);
  } else {
    BringDialogForward();
  }
  return 0;
}

void Win32Form::BringDialogForward() const {
  const HWND dialog = GetLastActivePopup(Window());
  if (dialog != Window()) SetForegroundWindow(dialog);
}

// Another program may still refuse that the session ends.
std::optional<LRESULT> Win32Form::OnQueryEndSession(WPARAM, LPARAM) {
  return AskToUnload(UnloadReason::kSessionEnd) ? TRUE : FALSE;
}

std::optional<LRESULT> Win32Form::OnEndSession(WPARAM wparam, LPARAM) {
  if (wparam != FALSE) UnloadUnasked();
  return 0;
}

std::optional<LRESULT> Win32Form::OnTimer(WPARAM wparam, LPARAM) {
  if (wparam < 1 || wparam > timers_.size()) return std::nullopt;
  timers_[wparam - 1]->Fire();
  return 0;
}

std::optional<LRESULT> Win32Form::OnInitMenuPopup(WPARAM wparam, LPARAM lparam) {
  if (popup_.IsOpen() || HIWORD(lparam) != 0) return 0;
  if (Win32MenuItem* item = menus_->Opening(reinterpret_cast<HMENU>(wparam))) {
    item->on_click.Raise();
  }
  return 0;
}

std::optional<LRESULT> Win32Form::OnSetCursor(WPARAM wparam, LPARAM lparam) {
  if (LOWORD(lparam) != HTCLIENT || reinterpret_cast<HWND>(wparam) != Window()) return std::nullopt;
  if (!toolkit_.ShowPointer(MousePointer::kDefault)) return std::nullopt;
  return TRUE;
}

std::optional<LRESULT> Win32Form::OnControlColor(WPARAM wparam, LPARAM) {
  const auto device = reinterpret_cast<HDC>(wparam);
  SetBkColor(device, GetSysColor(COLOR_BTNFACE));
  SetTextColor(device, GetSysColor(COLOR_BTNTEXT));
  return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
}

std::optional<LRESULT> Win32Form::OnDpiChanged(WPARAM wparam, LPARAM lparam) {
  const Fonts old_fonts = ChangeResolution(HIWORD(wparam));
  UniqueImageList old = std::exchange(pictures_, {});
  for (Widget* widget : widgets_) widget->OnResolutionChanged();
  const RECT& wanted = *reinterpret_cast<const RECT*>(lparam);
  last_inner_ = {-1, -1};
  SetWindowPos(Window(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
               wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
  if (IsLoaded()) RaiseResizeIfChanged();
  return 0;
}

std::optional<LRESULT> Win32Form::OnSettingsChanged(WPARAM wparam, LPARAM lparam) {
  for (const Widget* widget : widgets_) {
    SendMessageW(widget->Handle(), WM_SYSCOLORCHANGE, wparam, lparam);
    InvalidateRect(widget->Handle(), nullptr, TRUE);
  }
  InvalidateRect(Window(), nullptr, TRUE);
  return std::nullopt;
}

}  // namespace declarium::win32
