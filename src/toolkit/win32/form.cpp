#include "toolkit/win32/form.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "toolkit/win32/captioned.h"
#include "toolkit/win32/controls.h"
#include "toolkit/win32/dpi.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/timer.h"
#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/window_place.h"
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
      dpi_(Screens().SystemDpi()),
      fonts_(dpi_),
      focus_(*this),
      keys_(*this, definition.help_topic) {
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
  const Size outer = OuterPhysical(definition.size);
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
  const Size fitting = OuterPhysical(definition.size);
  SetOuterSize(Window(), fitting.width, fitting.height);
}

Size Win32Form::OuterPhysical(Size inner) const {
  const BorderBits bits = BitsOf(border_);
  RECT outer = ToPhysical(Rect{0, 0, inner.width, inner.height}, dpi_);
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
      std::exchange(large_icon_, DrawIconPicture(Icon::kApplication, ToPhysical(32, dpi_)));
  SendMessageW(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small_icon_.Get()));
  SendMessageW(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large_icon_.Get()));
}

void Win32Form::Build(const FormDefinition& definition) {
  for (const ControlDefinition& control : definition.controls) {
    std::unique_ptr<Component> component = MakeControl(*this, control, timers_.size() + 1);
    if (auto* made = dynamic_cast<Control*>(component.get())) focus_.Tabs().Append(control, *made);
    if (auto* widget = dynamic_cast<Widget*>(component.get())) widgets_.push_back(widget);
    if (auto* timer = dynamic_cast<Win32Timer*>(component.get())) timers_.push_back(timer);
    components_.push_back(std::move(component));
  }
  // Behind the controls that stand in it, wherever the table lists it.
  for (const auto& component : components_) {
    if (auto* frame = dynamic_cast<Win32Frame*>(component.get())) frame->SendToBack();
  }
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
    if (!placed_) {
      ChoosePlace(Window(), start_, before && before->Visible() ? before->Window() : nullptr);
    }
    last_inner_ = {-1, -1};
    RaiseResizeIfChanged();
  }
  ShowWindow(Window(), command);
  if (!visible_) return;
  SetForegroundWindow(Window());
  toolkit_.FormActivated(*this);
  focus_.Take();
  if (!modal) return;
  modal_ = &*modal;
  toolkit_.RunUntil([this] { return !visible_; });
  modal_ = nullptr;
}

void Win32Form::Hide() {
  if (!visible_) return;
  kept_command_ = ShowCommandOf(Window());
  visible_ = false;
  focus_.Forget();
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
  focus_.Forget();
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

int Win32Form::ScaleWidth() const {
  return ToPixelsInside(InnerSize(Window()).width, dpi_);
}

int Win32Form::ScaleHeight() const {
  return ToPixelsInside(InnerSize(Window()).height, dpi_);
}

int Win32Form::OuterWidth() const {
  const RECT area = WindowRect(Window());
  return ToPixels(area.right - area.left, dpi_);
}

int Win32Form::OuterHeight() const {
  const RECT area = WindowRect(Window());
  return ToPixels(area.bottom - area.top, dpi_);
}

void Win32Form::SetOuterWidth(int width) {
  const RECT area = WindowRect(Window());
  SetOuterSize(Window(), ToPhysical(width, dpi_), area.bottom - area.top);
}

void Win32Form::SetOuterHeight(int height) {
  const RECT area = WindowRect(Window());
  SetOuterSize(Window(), area.right - area.left, ToPhysical(height, dpi_));
}

void Win32Form::RaiseResizeIfChanged() {
  const Size inner = InnerSize(Window());
  if (inner == last_inner_) return;
  last_inner_ = inner;
  on_resize.Raise();
}

int Win32Form::CommandForShow() const {
  // A window that was minimized before it was hidden is so still.
  if (IsIconic(Window())) return SW_RESTORE;
  if (visible_) return SW_SHOW;
  return kept_command_ == ShowCommand::kHide ? SW_SHOWNORMAL : static_cast<int>(kept_command_);
}

Placement Win32Form::GetPlacement() const {
  const RECT area = NormalPlace(Window());
  return {.left = area.left,
          .top = area.top,
          .right = area.right,
          .bottom = area.bottom,
          .show = visible_ ? ShowCommandOf(Window()) : kept_command_};
}

void Win32Form::SetPlacement(const Placement& placement) {
  placed_ = true;
  kept_command_ = placement.show;
  SetNormalPlace(Window(), placement, visible_ ? static_cast<UINT>(placement.show) : SW_HIDE);
}

void Win32Form::SetShowCommand(ShowCommand command) {
  if (state_ == State::kUnloaded) return;
  if (command == ShowCommand::kHide) {
    Hide();
  } else if (visible_) {
    ShowWindow(Window(), static_cast<int>(command));
  } else {
    kept_command_ = command;
  }
}

void Win32Form::SetTopmost() {
  win32::SetTopmost(Window());
}

void Win32Form::BringToTop() {
  win32::BringToTop(Window());
}

void Win32Form::LockUpdate() {
  if (locks_++ == 0) LockWindowUpdate(Window());
}

void Win32Form::UnlockUpdate() {
  if (--locks_ == 0) LockWindowUpdate(nullptr);
}

Point Win32Form::CursorPosition() const {
  POINT at{};
  GetCursorPos(&at);
  return {ToPixels(at.x, dpi_), ToPixels(at.y, dpi_)};
}

void Win32Form::ShowPopupMenu(MenuItem& menu) {
  popup_.Show(*this, dynamic_cast<Win32MenuItem&>(menu));
}

}  // namespace declarium::win32
