#include "toolkit/win32/widget.h"

#include "toolkit/win32/form.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/toolkit.h"
#include "win32/system.h"
#include "win32/wide.h"

namespace declarium::win32 {

namespace {

std::u16string NameOf(const Component& component) {
  return {component.Name().begin(), component.Name().end()};
}

MouseButton HeldButton(WPARAM keys) {
  if (keys & MK_LBUTTON) return MouseButton::kLeft;
  if (keys & MK_RBUTTON) return MouseButton::kRight;
  return keys & MK_MBUTTON ? MouseButton::kMiddle : MouseButton::kNone;
}

// Characters that a one-line window only answers with a beep.
bool IsDialogCharacter(WPARAM character) {
  return character == VK_RETURN || character == VK_ESCAPE || character == VK_TAB;
}

}  // namespace

Modifiers HeldModifiers() {
  return {.shift = GetKeyState(VK_SHIFT) < 0,
          .control = GetKeyState(VK_CONTROL) < 0,
          .alt = GetKeyState(VK_MENU) < 0};
}

const Widget::Entry Widget::kHandlers[] = {
    {WM_SETFOCUS, &Widget::OnSetFocus},         {WM_KEYDOWN, &Widget::OnKeyDown},
    {WM_SYSKEYDOWN, &Widget::OnSystemKeyDown},  {WM_KEYUP, &Widget::OnKeyUp},
    {WM_CONTEXTMENU, &Widget::OnContextMenu},   {WM_CHAR, &Widget::OnChar},
    {WM_SETCURSOR, &Widget::OnSetCursor},       {WM_MOUSEMOVE, &Widget::OnMouseMove},
    {WM_LBUTTONDOWN, &Widget::OnLeftDown},      {WM_RBUTTONDOWN, &Widget::OnRightDown},
    {WM_LBUTTONUP, &Widget::OnLeftUp},          {WM_RBUTTONUP, &Widget::OnRightUp},
    {WM_LBUTTONDBLCLK, &Widget::OnDoubleClick},
};

Widget::Widget(Win32Form& form, Control& control, const ControlDefinition& definition,
               const NativeClass& native)
    : form_(form),
      control_(&control),
      bounds_(definition.bounds),
      font_(definition.font),
      named_for_accessibility_(!definition.accessible_name.empty()) {
  const std::u16string caption(definition.caption);
  const DWORD style = WS_CHILD | native.style | (definition.visible ? WS_VISIBLE : 0) |
                      (definition.enabled ? 0 : WS_DISABLED) |
                      (IsTabStop(definition) ? WS_TABSTOP : 0);
  const RECT place = ToPhysical(bounds_, Dpi());
  window_.Reset(CreateWindowExW(native.extended_style, native.name, Wide(caption), style,
                                place.left, place.top, place.right - place.left,
                                place.bottom - place.top, form.Window(), nullptr,
                                GetModuleHandleW(nullptr), nullptr));
  // Through the window's own data rather than SetWindowSubclass, which looks for its properties at
  // every message: with a window system in another process that costs more than most messages do.
  SetWindowLongPtrW(Handle(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  native_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
  Mark();
  ApplyFont(FALSE);
  if (named_for_accessibility_) {
    form_.TheToolkit().TheAccessibility().Name(Handle(),
                                               std::u16string(definition.accessible_name));
  }
}

Widget::~Widget() {
  if (named_for_accessibility_) form_.TheToolkit().TheAccessibility().Forget(Handle());
  // The procedure stays, since a tooltip's may stand before it.
  SetWindowLongPtrW(Handle(), GWLP_USERDATA, 0);
  Unmark();
}

void Widget::Mark() {
  const ATOM name = GlobalAddAtomW(Wide(NameOf(*control_)));
  SetPropW(Handle(), L"Name", reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(name)));
}

void Widget::Unmark() {
  const HANDLE name = RemovePropW(Handle(), L"Name");
  if (name) GlobalDeleteAtom(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(name)));
}

int Widget::Dpi() const {
  return form_.Dpi();
}

void Widget::ApplyFont(BOOL repaint) {
  Send(WM_SETFONT, reinterpret_cast<WPARAM>(form_.TheFonts().Get(font_)), repaint);
}

void Widget::Place(const Rect& bounds) {
  if (bounds == bounds_) return;
  bounds_ = bounds;
  PutInPlace();
}

void Widget::PutInPlace() {
  const RECT place = ToPhysical(bounds_, Dpi());
  SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Widget::OnResolutionChanged() {
  ApplyFont(TRUE);
  PutInPlace();
}

Point Widget::ToPoint(LPARAM place) const {
  return {ToPixels(GET_X_LPARAM(place), Dpi()), ToPixels(GET_Y_LPARAM(place), Dpi())};
}

MouseEvent Widget::MouseEventOf(MouseButton button, WPARAM keys, LPARAM place) const {
  return {.button = button,
          .at = ToPoint(place),
          .modifiers = {.shift = (keys & MK_SHIFT) != 0,
                        .control = (keys & MK_CONTROL) != 0,
                        .alt = GetKeyState(VK_MENU) < 0}};
}

LRESULT Widget::PassOn(UINT message, WPARAM wparam, LPARAM lparam) const {
  return CallWindowProcW(native_, Handle(), message, wparam, lparam);
}

LRESULT CALLBACK Widget::Procedure(HWND window, UINT message, WPARAM wparam,
                                   LPARAM lparam) noexcept {
  auto* widget = reinterpret_cast<Widget*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!widget) {  // the window outlives its widget by the messages of its end
    const auto native = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
    return CallWindowProcW(native, window, message, wparam, lparam);
  }
  const WNDPROC native = widget->native_;
  // The widget may be gone when it has answered.
  Boundary& boundary = widget->form_.TheToolkit().boundary;
  std::optional<LRESULT> answer = 0;
  boundary.Run([&] { answer = widget->Answer(message, wparam, lparam); });
  if (answer) return *answer;
  // A handler may have taken the form away, and with it widget and window.
  return IsWindow(window) ? CallWindowProcW(native, window, message, wparam, lparam) : 0;
}

std::optional<LRESULT> Widget::Answer(UINT message, WPARAM wparam, LPARAM lparam) {
  if (IsInput(message) && !form_.TakesInput()) return 0;
  return OnMessage(message, wparam, lparam);
}

bool Widget::IsInput(UINT message) const {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_CONTEXTMENU;
}

std::optional<LRESULT> Widget::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (!form_.IsLoaded()) return std::nullopt;
  for (const Entry& entry : kHandlers) {
    if (entry.message == message) return (this->*entry.handler)(wparam, lparam);
  }
  return std::nullopt;
}

std::optional<LRESULT> Widget::OnSetFocus(WPARAM wparam, LPARAM lparam) {
  const LRESULT result = PassOn(WM_SETFOCUS, wparam, lparam);
  form_.Focus().ArrivedAt(*control_);
  return result;
}

std::optional<LRESULT> Widget::OnKeyDown(WPARAM wparam, LPARAM) {
  KeyDown event{.code = static_cast<int>(wparam), .modifiers = HeldModifiers()};
  const HWND window = Handle();
  control_->on_key_down.Raise(event);
  if (event.code != 0) return std::nullopt;
  // The character of the key is in the queue already.
  MSG message;
  while (PeekMessageW(&message, window, WM_CHAR, WM_DEADCHAR, PM_REMOVE)) {
  }
  return 0;
}

// F10 opens the menu bar and therefore is a key of the system's, even with Shift.
std::optional<LRESULT> Widget::OnSystemKeyDown(WPARAM wparam, LPARAM lparam) {
  if (wparam != VK_F10) return std::nullopt;
  const bool asks = HeldModifiers() == Modifiers{.shift = true};
  const auto answer = OnKeyDown(wparam, lparam);
  return answer || !asks ? answer : AskForContextMenu();
}

std::optional<LRESULT> Widget::OnKeyUp(WPARAM wparam, LPARAM) {
  return wparam == VK_APPS ? AskForContextMenu() : std::nullopt;
}

// Assistive tools ask with the message that the system makes of the two keys.
std::optional<LRESULT> Widget::OnContextMenu(WPARAM, LPARAM lparam) {
  constexpr LPARAM kFromKeyboard = -1;
  return lparam == kFromKeyboard ? AskForContextMenu() : std::nullopt;
}

std::optional<LRESULT> Widget::AskForContextMenu() {
  if (!control_->on_context_menu.HasHandler()) return std::nullopt;
  form_.Popup().AskedForAt(*control_);
  return 0;
}

std::optional<LRESULT> Widget::OnChar(WPARAM wparam, LPARAM lparam) {
  KeyPress event{.character = static_cast<char16_t>(wparam)};
  control_->on_key_press.Raise(event);
  if (event.character == 0) return 0;
  const bool one_line = (Send(WM_GETDLGCODE) & DLGC_WANTALLKEYS) == 0;
  if (one_line && IsDialogCharacter(event.character)) return 0;
  return PassOn(WM_CHAR, event.character, lparam);
}

std::optional<LRESULT> Widget::OnSetCursor(WPARAM, LPARAM lparam) {
  form_.Tips().PointerArrived(form_.Window(), form_.Widgets());
  if (LOWORD(lparam) != HTCLIENT) return std::nullopt;
  if (!form_.TheToolkit().ShowPointer(control_->Pointer())) return std::nullopt;
  return TRUE;
}

// Whether the keys of the event are held is asked for only when somebody listens.
void Widget::RaiseMouse(const Event<const MouseEvent&>& event, MouseButton button, WPARAM keys,
                        LPARAM place) const {
  if (event.HasHandler()) event.Raise(MouseEventOf(button, keys, place));
}

std::optional<LRESULT> Widget::OnMouseMove(WPARAM wparam, LPARAM lparam) {
  RaiseMouse(control_->on_mouse_move, HeldButton(wparam), wparam, lparam);
  return std::nullopt;
}

std::optional<LRESULT> Widget::OnLeftDown(WPARAM wparam, LPARAM lparam) {
  RaiseMouse(control_->on_mouse_down, MouseButton::kLeft, wparam, lparam);
  return std::nullopt;
}

std::optional<LRESULT> Widget::OnRightDown(WPARAM wparam, LPARAM lparam) {
  RaiseMouse(control_->on_mouse_down, MouseButton::kRight, wparam, lparam);
  return std::nullopt;
}

std::optional<LRESULT> Widget::OnLeftUp(WPARAM wparam, LPARAM lparam) {
  const LRESULT result = PassOn(WM_LBUTTONUP, wparam, lparam);
  RaiseMouse(control_->on_mouse_up, MouseButton::kLeft, wparam, lparam);
  return result;
}

std::optional<LRESULT> Widget::OnRightUp(WPARAM wparam, LPARAM lparam) {
  const LRESULT result = PassOn(WM_RBUTTONUP, wparam, lparam);
  RaiseMouse(control_->on_mouse_up, MouseButton::kRight, wparam, lparam);
  return result;
}

std::optional<LRESULT> Widget::OnDoubleClick(WPARAM wparam, LPARAM lparam) {
  const LRESULT result = PassOn(WM_LBUTTONDBLCLK, wparam, lparam);
  control_->on_double_click.Raise();
  return result;
}

}  // namespace declarium::win32
