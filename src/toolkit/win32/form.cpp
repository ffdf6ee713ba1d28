#include "toolkit/win32/form.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "toolkit/captioned.h"
#include "toolkit/win32/captioned.h"
#include "toolkit/win32/dpi.h"
#include "toolkit/win32/list_view.h"
#include "toolkit/win32/picture_box.h"
#include "toolkit/win32/progress_bar.h"
#include "toolkit/win32/rows.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/text.h"
#include "toolkit/win32/timer.h"
#include "toolkit/win32/toolbar.h"
#include "toolkit/win32/toolkit.h"
#include "win32/system.h"
#include "win32/wide.h"

namespace declarium::win32 {

namespace {

struct BorderBits {
  DWORD style;
  DWORD extended;
};

BorderBits BitsOf(BorderStyle border) {
  switch (border) {
    case BorderStyle::kSizable:
      return {WS_CLIPCHILDREN | WS_OVERLAPPEDWINDOW, 0};
    case BorderStyle::kDialog:
      return {WS_CLIPCHILDREN | WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME};
    case BorderStyle::kNone:
      return {WS_CLIPCHILDREN | WS_POPUP, WS_EX_TOOLWINDOW};
  }
  return {WS_CLIPCHILDREN | WS_OVERLAPPEDWINDOW, 0};
}

std::u16string FormName(const Form& form) {
  return {form.Name().begin(), form.Name().end()};
}

}  // namespace

Win32Form::Win32Form(Win32Toolkit& toolkit, const FormDefinition& definition)
    : Form(definition.name),
      toolkit_(toolkit),
      border_(definition.border),
      start_(definition.start),
      minimum_size_(definition.minimum_size),
      help_topic_(definition.help_topic),
      dpi_(Screens().SystemDpi()),
      fonts_(dpi_) {
  CreateNativeWindow(definition);
  Build(definition);
  toolkit_.Register(*this);
}

Win32Form::~Win32Form() {
  Close();
  toolkit_.Unregister(*this);
  // The tooltips let go of the controls while these still have windows, and the controls take their
  // windows away before the form's window would.
  tips_.Reset();
  widgets_.clear();
  components_.clear();
  SetWindowLongPtrW(Window(), GWLP_USERDATA, 0);
  window_.Reset();
}

void Win32Form::CreateNativeWindow(const FormDefinition& definition) {
  const BorderBits bits = BitsOf(definition.border);
  const std::u16string caption(definition.caption);
  menus_ = std::make_unique<MenuSet>(definition, components_);
  const Size outer = OuterDots(definition.size);
  window_.Reset(CreateWindowExW(bits.extended, WindowClass(), Wide(caption), bits.style,
                                CW_USEDEFAULT, CW_USEDEFAULT, outer.width, outer.height, nullptr,
                                menus_->ReleaseBar(), GetModuleHandleW(nullptr), nullptr));
  SetWindowLongPtrW(Window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  menus_->ShowIn(Window());
  const ATOM name = GlobalAddAtomW(Wide(FormName(*this)));
  SetPropW(Window(), L"Name", reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(name)));
  const int dpi = Screens().WindowDpi(Window());
  if (dpi == dpi_) return;
  // The system has put the window on a screen that is not like the main one.
  ChangeResolution(dpi);
  const Size fitting = OuterDots(definition.size);
  SetOuterSize(fitting.width, fitting.height);
}

Size Win32Form::OuterDots(Size inner) const {
  const BorderBits bits = BitsOf(border_);
  RECT outer = ToDots(Rect{0, 0, inner.width, inner.height}, dpi_);
  Screens().AddBorders(outer, bits.style, bits.extended, menus_->HasBar(), dpi_);
  return {static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top)};
}

Fonts Win32Form::ChangeResolution(int dpi) {
  dpi_ = dpi;
  SetIcons();
  return std::exchange(fonts_, Fonts(dpi_));
}

HIMAGELIST Win32Form::SmallPictures() const {
  if (!pictures_) pictures_ = DrawImageList(SmallIconSize(dpi_));
  return pictures_.Get();
}

void Win32Form::SetIcons() {
  // The window lets go of the icons before they are destroyed.
  const UniqueIcon old_small =
      std::exchange(small_icon_, DrawIconPicture(Icon::kApplication, SmallIconSize(dpi_)));
  const UniqueIcon old_large =
      std::exchange(large_icon_, DrawIconPicture(Icon::kApplication, ToDots(32, dpi_)));
  SendMessageW(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small_icon_.Get()));
  SendMessageW(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large_icon_.Get()));
}

void Win32Form::Build(const FormDefinition& definition) {
  for (const ControlDefinition& control : definition.controls) {
    std::unique_ptr<Component> component = Make(control);
    if (auto* made = dynamic_cast<Control*>(component.get())) tabs_.Append(control, *made);
    if (auto* widget = dynamic_cast<Widget*>(component.get())) widgets_.push_back(widget);
    components_.push_back(std::move(component));
  }
  // Behind the controls that stand in it, wherever the table lists it.
  for (const auto& component : components_) {
    if (auto* frame = dynamic_cast<Win32Frame*>(component.get())) frame->SendToBack();
  }
}

std::unique_ptr<Component> Win32Form::Make(const ControlDefinition& definition) {
  switch (definition.kind) {
    case ControlKind::kLabel:
      return std::make_unique<Win32Label>(*this, definition);
    case ControlKind::kFrame:
      return std::make_unique<Win32Frame>(*this, definition);
    case ControlKind::kCommandButton:
      return std::make_unique<Win32CommandButton>(*this, definition);
    case ControlKind::kCheckBox:
      return std::make_unique<Win32CheckBox>(*this, definition);
    case ControlKind::kListBox:
      return std::make_unique<Win32ListBox>(*this, definition);
    case ControlKind::kComboBox:
      return std::make_unique<Win32ComboBox>(*this, definition);
    case ControlKind::kTextBox:
    case ControlKind::kMultiLineTextBox:
      return std::make_unique<Win32TextBox>(*this, definition);
    case ControlKind::kRichText:
      return std::make_unique<Win32RichText>(*this, definition);
    case ControlKind::kListView:
      return std::make_unique<Win32ListView>(*this, definition);
    case ControlKind::kToolbar:
      return std::make_unique<Win32Toolbar>(*this, definition);
    case ControlKind::kPictureBox:
      return std::make_unique<Win32PictureBox>(*this, definition);
    case ControlKind::kProgressBar:
      return std::make_unique<Win32ProgressBar>(*this, definition);
    case ControlKind::kTimer: {
      auto timer = std::make_unique<Win32Timer>(*this, definition, timers_.size() + 1);
      timers_.push_back(timer.get());
      return timer;
    }
  }
  throw std::logic_error("unknown kind of control " + std::string(definition.name));
}

Component& Win32Form::Find(std::string_view name) const {
  const auto found = std::ranges::find(
      components_, name, [](const auto& component) { return std::string_view(component->Name()); });
  if (found == components_.end()) {
    throw std::logic_error("form " + Name() + " has no " + std::string(name));
  }
  return **found;
}

// Not through a property of the window: looking for one is a call into another process on some
// systems, and a list that is painted sends a notification for each row.
Widget* Win32Form::WidgetOf(HWND window) const {
  const auto found = std::ranges::find(widgets_, window, &Widget::Handle);
  return found == widgets_.end() ? nullptr : *found;
}

void Win32Form::Load() {
  if (state_ != State::kCreated) return;
  state_ = State::kLoaded;
  on_load.Raise();
  for (Win32Timer* timer : timers_) timer->Restart();
}

void Win32Form::Show(ShowMode mode, Form* owner) {
  Load();
  if (state_ != State::kLoaded) return;
  auto* before = dynamic_cast<Win32Form*>(owner);
  if (!before && mode == ShowMode::kModal) before = toolkit_.ActiveForm();
  if (before && before != this) {
    SetWindowLongPtrW(Window(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(before->Window()));
  }
  std::optional<ModalScope> modal;
  if (mode == ShowMode::kModal) modal.emplace(toolkit_, this);
  const int command = CommandForShow();
  visible_ = true;
  if (!shown_before_) {
    shown_before_ = true;
    if (!placed_) ChoosePlace(before);
    last_inner_ = {-1, -1};
    RaiseResizeIfChanged();
  }
  ShowWindow(Window(), command);
  if (!visible_) return;
  SetForegroundWindow(Window());
  toolkit_.FormActivated(*this);
  TakeFocus();
  if (!modal) return;
  modal_ = &*modal;
  toolkit_.RunUntil([this] { return !visible_; });
  modal_ = nullptr;
}

void Win32Form::Hide() {
  if (!visible_) return;
  kept_command_ = NativeShowCommand();
  visible_ = false;
  if (focus_ == toolkit_.FocusedControl()) toolkit_.ForgetFocus();
  toolkit_.FormHidden(*this);
  // The release that a pressed control waits for would not arrive any more.
  if (IsChild(Window(), GetCapture())) ReleaseCapture();
  // The others take input again before this window goes, or another program would come forward.
  if (modal_) modal_->Unblock();
  ShowWindow(Window(), SW_HIDE);
}

void Win32Form::Close() {
  if (state_ == State::kUnloaded) return;
  state_ = State::kUnloaded;
  for (Win32Timer* timer : timers_) timer->Restart();
  // A menu or a drag of this window would go on without it, and the program with them.
  if (visible_) SendMessageW(Window(), WM_CANCELMODE, 0, 0);
  Hide();
  if (focus_ == toolkit_.FocusedControl()) toolkit_.ForgetFocus();
  // Drivers must not find the windows of a form that is gone for the user.
  const HANDLE name = RemovePropW(Window(), L"Name");
  if (name) GlobalDeleteAtom(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(name)));
  for (Widget* widget : widgets_) widget->Unmark();
}

std::u16string Win32Form::Caption() const {
  return WindowText(Window());
}

void Win32Form::SetCaption(std::u16string_view caption) {
  SetWindowTextW(Window(), Wide(std::u16string(caption)));
}

void Win32Form::SetEnabled(bool enabled) {
  enabled_ = enabled;
  UpdateNativeEnabled();
}

void Win32Form::Block() {
  ++blocked_;
  UpdateNativeEnabled();
}

void Win32Form::Unblock() {
  --blocked_;
  UpdateNativeEnabled();
}

void Win32Form::UpdateNativeEnabled() {
  EnableWindow(Window(), enabled_ && blocked_ == 0);
}

void Win32Form::MoveFocus(Control& control) {
  if (!CanTakeFocus(control)) return;
  focus_ = &control;
  if (toolkit_.ActiveForm() != this) {
    SetForegroundWindow(Window());
    toolkit_.FormActivated(*this);
  }
  TakeFocus();
}

bool Win32Form::CanTakeFocus(const Control& control) const {
  return visible_ && enabled_ && control.Visible() && control.Enabled();
}

void Win32Form::PassFocusFrom(const Control& control) {
  if (focus_ != &control) return;
  focus_ = tabs_.Next(&control);
  if (toolkit_.FocusedControl() == &control) TakeFocus();
}

bool Win32Form::HasFocus(const Control& control) const {
  return visible_ && toolkit_.FocusedControl() == &control;
}

void Win32Form::FocusArrived(Control& control) {
  focus_ = &control;
  toolkit_.ControlFocused(&control);
}

void Win32Form::TakeFocus() {
  if (!focus_) focus_ = tabs_.Next(nullptr);
  Control* wanted = focus_;
  if (auto* widget = dynamic_cast<Widget*>(wanted)) ::SetFocus(widget->Handle());
  // The system gives no focus to a program that is not in the foreground; for the form's own
  // bookkeeping the control has it all the same, and the system follows on activation.
  if (focus_ == wanted) toolkit_.ControlFocused(wanted);
}

void Win32Form::MakeTips() {
  tips_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0,
                              0, 0, 0, Window(), nullptr, GetModuleHandleW(nullptr), nullptr));
}

// The window of the tooltips hears every message of each control that has one, which would hold up
// the form's first appearance.
void Win32Form::PointerArrived() {
  if (std::exchange(pointer_arrived_, true)) return;
  for (const Widget* widget : widgets_) {
    SetToolTipOf(widget->Handle(), widget->TheControl().ToolTip());
  }
}

void Win32Form::SetToolTipOf(HWND control, const std::u16string& text) {
  if (!pointer_arrived_) return;
  if (!tips_) {
    // A form without tooltips owns no window for them: owned windows keep a form from becoming
    // topmost on some systems.
    if (text.empty()) return;
    MakeTips();
  }
  std::u16string shown = text;
  TTTOOLINFOW info{};
  info.cbSize = sizeof info;
  info.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  info.hwnd = Window();
  info.uId = reinterpret_cast<UINT_PTR>(control);
  SendMessageW(tips_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
  info.lpszText = WideBuffer(shown);
  if (!text.empty()) SendMessageW(tips_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

POINT Win32Form::PopupPlace() const {
  POINT at{};
  GetCursorPos(&at);
  const auto* widget = dynamic_cast<const Widget*>(popup_at_);
  if (!widget) return at;
  RECT area{};
  GetWindowRect(widget->Handle(), &area);
  const int inset = ToDots(16, dpi_);
  return {area.left + inset, area.top + inset};
}

void Win32Form::ContextMenuAskedFor(Control& control) {
  popup_at_ = &control;
  try {
    control.on_context_menu.Raise();
  } catch (...) {
    popup_at_ = nullptr;
    throw;
  }
  popup_at_ = nullptr;
}

void Win32Form::ShowPopupMenu(MenuItem& menu) {
  auto& item = dynamic_cast<Win32MenuItem&>(menu);
  if (!item.Opens()) return;
  const POINT at = PopupPlace();
  in_popup_ = true;
  const BOOL chosen = TrackPopupMenuEx(item.Opens(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y,
                                       Window(), nullptr);
  in_popup_ = false;
  if (Win32MenuItem* entry = menus_->WithId(static_cast<UINT>(chosen))) entry->on_click.Raise();
}

}  // namespace declarium::win32
