// Uses real windows as a person does: by posting and sending their messages.
#include <algorithm>
#include <stdexcept>

#include "toolkit/backend.h"
#include "toolkit/demo_form.h"
#include "toolkit/win32/dpi.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/widget.h"
#include "win32/system.h"
#include "win32/wide.h"

namespace declarium {

namespace {

using namespace win32;

constexpr DWORD kLimit = 5000;  // milliseconds

// Runs an action every few milliseconds, also inside the loops of modal dialogs, until it returns
// true.
class Repeated {
 public:
  static void Start(std::function<bool()> action) {
    const UINT_PTR id = SetTimer(nullptr, 0, 10, Tick);
    Actions().push_back({id, std::move(action)});
  }

 private:
  struct Action {
    UINT_PTR id;
    std::function<bool()> run;
  };
  static std::vector<Action>& Actions() {
    static std::vector<Action> actions;
    return actions;
  }
  static void CALLBACK Tick(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = std::ranges::find(Actions(), id, &Action::id);
    if (found == Actions().end()) return;
    const Action action = *found;
    // Inside the action events are handled, so it must not begin once more meanwhile.
    Actions().erase(found);
    KillTimer(nullptr, id);
    if (!action.run()) Start(action.run);
  }
};

HWND WindowOf(const Control& control) {
  return dynamic_cast<const Widget&>(control).Handle();
}

HWND FindDialog() {
  return FindWindowW(L"#32770", nullptr);
}

WPARAM MouseKeys(MouseButton button) {
  if (button == MouseButton::kLeft) return MK_LBUTTON;
  return button == MouseButton::kRight ? MK_RBUTTON : 0;
}

class Win32Backend : public Backend {
 public:
  Toolkit& TheToolkit() override { return toolkit_; }

  void Click(CommandButton& button) override { ClickNative(button); }
  void Click(CheckBox& box) override { ClickNative(box); }

  void ChooseRow(RowList& list, int row) override {
    const HWND window = WindowOf(list);
    if (dynamic_cast<ListBox*>(&list)) {
      RECT area{};
      SendMessageW(window, LB_GETITEMRECT, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&area));
      PressAt(window, {area.left + 3, area.top + 3}, MouseButton::kLeft);
      return;
    }
    list.SetFocus();
    SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(window));
    toolkit_.ProcessPendingEvents();
  }

  void ClickEntry(ListView& list, int position, MouseButton button) override {
    PressAt(WindowOf(list), EntryPoint(list, position), button);
  }
  void ClickEmptySpace(ListView& list) override {
    PressAt(WindowOf(list), EmptyPoint(list), MouseButton::kLeft);
  }
  void DoubleClickEntry(ListView& list, int position) override {
    PressTwiceAt(WindowOf(list), EntryPoint(list, position));
  }
  void ClickCheckBox(ListView& list, int position) override {
    POINT at = EntryPoint(list, position);
    for (LVHITTESTINFO info{}; at.x > 0; --at.x) {
      info.pt = at;
      SendMessageW(WindowOf(list), LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info));
      if ((info.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON) break;
    }
    if (at.x == 0) throw std::logic_error(list.Name() + " has no check box there");
    PressAt(WindowOf(list), at, MouseButton::kLeft);
  }
  void DoubleClickEmptySpace(ListView& list) override {
    PressTwiceAt(WindowOf(list), EmptyPoint(list));
  }

  void ClickToolbar(Toolbar& toolbar, std::string_view key) override {
    const HWND window = WindowOf(toolbar);
    const auto found = std::ranges::find(demo::kButtons, key, &ToolbarButtonDefinition::key);
    const int id = static_cast<int>(found - std::begin(demo::kButtons));
    const LRESULT index = SendMessageW(window, TB_COMMANDTOINDEX, static_cast<WPARAM>(id), 0);
    RECT area{};
    SendMessageW(window, TB_GETITEMRECT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&area));
    PressAt(window, {(area.left + area.right) / 2, (area.top + area.bottom) / 2},
            MouseButton::kLeft);
  }

  void ChooseMenu(Form& form, std::string_view name) override {
    const auto& native = dynamic_cast<Win32Form&>(form);
    const auto& item = form.Get<Win32MenuItem>(name);
    if (item.Parent()) {
      SendMessageW(native.Window(), WM_INITMENUPOPUP,
                   reinterpret_cast<WPARAM>(item.Parent()->Opens()), 0);
    }
    SendMessageW(native.Window(), WM_COMMAND, native.Menus().IdOf(item), 0);
    toolkit_.ProcessPendingEvents();
  }

  void PressKey(int code, Modifiers modifiers) override {
    HWND window = WindowOf(RequireFocus());
    HoldKey(VK_CONTROL, modifiers.control);
    HoldKey(VK_SHIFT, modifiers.shift);
    const bool system_key = code == key::kF10;
    const UINT down = system_key ? WM_SYSKEYDOWN : WM_KEYDOWN;
    const UINT up = system_key ? WM_SYSKEYUP : WM_KEYUP;
    PostMessageW(window, down, static_cast<WPARAM>(code), 1);
    toolkit_.ProcessPendingEvents();
    if (IsWindow(window)) PostMessageW(window, up, static_cast<WPARAM>(code), 0xC0000001);
    toolkit_.ProcessPendingEvents();
    HoldKey(VK_CONTROL, false);
    HoldKey(VK_SHIFT, false);
  }

  void Type(std::u16string_view text) override {
    for (const char16_t unit : text) {
      PostMessageW(WindowOf(RequireFocus()), WM_CHAR, unit, 1);
      toolkit_.ProcessPendingEvents();
    }
  }

  void MouseDown(Control& control, const MouseEvent& event) override {
    Send(control, event.button == MouseButton::kRight ? WM_RBUTTONDOWN : WM_LBUTTONDOWN,
         MouseKeys(event.button), event.at);
  }
  void MouseMove(Control& control, const MouseEvent& event) override {
    Send(control, WM_MOUSEMOVE, MouseKeys(event.button), event.at);
  }
  void MouseUp(Control& control, const MouseEvent& event) override {
    Send(control, event.button == MouseButton::kRight ? WM_RBUTTONUP : WM_LBUTTONUP, 0, event.at);
  }
  void DoubleClick(Control& control) override { PressTwiceAt(WindowOf(control), {3, 3}); }

  void Close(Form& form) override {
    SendMessageW(dynamic_cast<Win32Form&>(form).Window(), WM_CLOSE, 0, 0);
    toolkit_.ProcessPendingEvents();
  }
  void Resize(Form& form, Size outer) override {
    const auto& native = dynamic_cast<Win32Form&>(form);
    AwaitQuiet();
    SetWindowPos(native.Window(), nullptr, 0, 0, ToPhysical(outer.width, native.Dpi()),
                 ToPhysical(outer.height, native.Dpi()), SWP_NOMOVE | SWP_NOZORDER);
    toolkit_.ProcessPendingEvents();
  }

  // The window manager's late answer to the showing of a window would undo a resizing.
  void AwaitQuiet() {
    constexpr DWORD kQuiet = 50;
    for (int i = 0; i < 100; ++i) {
      if (MsgWaitForMultipleObjects(0, nullptr, FALSE, kQuiet, QS_ALLINPUT) == WAIT_TIMEOUT) return;
      toolkit_.ProcessPendingEvents();
    }
  }

  void AnswerNextMessage(Answer answer) override {
    Repeated::Start([answer] {
      const HWND dialog = FindDialog();
      if (!dialog || !IsWindowVisible(dialog)) return false;
      PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(answer), 0);
      return true;
    });
  }
  void AnswerNextText(std::u16string_view text) override {
    InNextModalForm("frmInput", [this, answer = std::u16string(text)](Form& form) {
      form.Get<TextBox>("Text1").SetText(answer);
      Click(form.Get<CommandButton>(answer.empty() ? "Command2" : "Command1"));
    });
  }
  void InNextModalForm(std::string_view name, std::function<void(Form&)> action) override {
    Repeated::Start([this, name = std::string(name), action = std::move(action)] {
      const auto form = std::ranges::find_if(toolkit_.Forms(), [&](Win32Form* candidate) {
        return candidate->Name() == name && candidate->Visible();
      });
      if (form == toolkit_.Forms().end() || !toolkit_.IsModalOpen()) return false;
      action(**form);
      return true;
    });
  }
  void ChooseInNextPopup(Form& form, std::string_view name) override {
    const auto& item = form.Get<Win32MenuItem>(name);
    const HMENU menu = item.Parent()->Opens();
    int steps = 1;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      if (GetMenuItemID(menu, i) == dynamic_cast<Win32Form&>(form).Menus().IdOf(item)) break;
      ++steps;
    }
    const HWND window = dynamic_cast<Win32Form&>(form).Window();
    Repeated::Start([window, steps] {
      GUITHREADINFO info{};
      info.cbSize = sizeof info;
      GetGUIThreadInfo(GetCurrentThreadId(), &info);
      if ((info.flags & GUI_INMENUMODE) == 0) return false;
      for (int i = 0; i < steps; ++i) PostMessageW(window, WM_KEYDOWN, VK_DOWN, 1);
      PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
      return true;
    });
  }

  bool WaitUntil(const std::function<bool()>& done) override {
    const DWORD begin = GetTickCount();
    while (!done() && GetTickCount() - begin < kLimit) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
      toolkit_.ProcessPendingEvents();
    }
    return done();
  }

  Color PixelOf(PictureBox& box, Point at) override {
    const HWND window = WindowOf(box);
    const int dpi = Screens().WindowDpi(window);
    const HDC device = GetDC(window);
    const COLORREF color = GetPixel(device, ToPhysical(at.x, dpi), ToPhysical(at.y, dpi));
    ReleaseDC(window, device);
    return color;
  }

 private:
  void ClickNative(Control& control) {
    control.SetFocus();
    PressAt(WindowOf(control), {4, 4}, MouseButton::kLeft);
  }

  // A press and a release at a place in physical pixels.
  void PressAt(HWND window, POINT at, MouseButton button) {
    const bool right = button == MouseButton::kRight;
    const LPARAM place = MAKELPARAM(at.x, at.y);
    PostMessageW(window, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, MouseKeys(button), place);
    PostMessageW(window, right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, place);
    toolkit_.ProcessPendingEvents();
  }
  void PressTwiceAt(HWND window, POINT at) {
    PressAt(window, at, MouseButton::kLeft);
    const LPARAM place = MAKELPARAM(at.x, at.y);
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
    toolkit_.ProcessPendingEvents();
  }
  void Send(Control& control, UINT message, WPARAM keys, Point at) {
    const HWND window = WindowOf(control);
    const int dpi = Screens().WindowDpi(window);
    PostMessageW(window, message, keys, MAKELPARAM(ToPhysical(at.x, dpi), ToPhysical(at.y, dpi)));
    toolkit_.ProcessPendingEvents();
  }

  static POINT EntryPoint(ListView& list, int position) {
    list.EnsureVisible(position);
    RECT area{};
    area.left = LVIR_LABEL;
    SendMessageW(WindowOf(list), LVM_GETITEMRECT, static_cast<WPARAM>(position - 1),
                 reinterpret_cast<LPARAM>(&area));
    return {area.left + 4, (area.top + area.bottom) / 2};
  }
  static POINT EmptyPoint(ListView& list) {
    RECT area{};
    GetClientRect(WindowOf(list), &area);
    return {5, area.bottom - 3};
  }

  Control& RequireFocus() const {
    if (!toolkit_.FocusedControl()) throw std::logic_error("no control has the focus");
    return *toolkit_.FocusedControl();
  }
  static void HoldKey(int key, bool held) {
    BYTE state[256];
    GetKeyboardState(state);
    state[key] = held ? 0x80 : 0;
    SetKeyboardState(state);
  }

  Win32Toolkit toolkit_;
};

}  // namespace

std::unique_ptr<Backend> MakeBackend() {
  return std::make_unique<Win32Backend>();
}

}  // namespace declarium
