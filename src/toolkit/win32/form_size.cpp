// A form's place and size.
#include <algorithm>
#include <vector>

#include "toolkit/screen_place.h"
#include "toolkit/win32/dpi.h"
#include "toolkit/win32/form.h"
#include "toolkit/win32/scale.h"

namespace declarium::win32 {

namespace {

RECT WindowRect(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return area;
}

RECT WorkArea(HWND window) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

// Takes no more screens than there is room for: the system called, which no exception may cross.
BOOL CALLBACK AddWorkArea(HMONITOR monitor, HDC, RECT*, LPARAM list) noexcept {
  auto& areas = *reinterpret_cast<std::vector<Rect>*>(list);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (areas.size() < areas.capacity() && GetMonitorInfoW(monitor, &info)) {
    const RECT& work = info.rcWork;
    areas.push_back({static_cast<int>(work.left), static_cast<int>(work.top),
                     static_cast<int>(work.right - work.left),
                     static_cast<int>(work.bottom - work.top)});
  }
  return TRUE;
}

std::vector<Rect> WorkAreas() {
  std::vector<Rect> areas;
  areas.reserve(static_cast<std::size_t>(std::max(GetSystemMetrics(SM_CMONITORS), 1)));
  EnumDisplayMonitors(nullptr, nullptr, AddWorkArea, reinterpret_cast<LPARAM>(&areas));
  return areas;
}

}  // namespace

int Win32Form::ScaleWidth() const {
  RECT area{};
  GetClientRect(Window(), &area);
  return ToPixelsInside(area.right, dpi_);
}

int Win32Form::ScaleHeight() const {
  RECT area{};
  GetClientRect(Window(), &area);
  return ToPixelsInside(area.bottom, dpi_);
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
  SetOuterSize(ToDots(width, dpi_), area.bottom - area.top);
}

void Win32Form::SetOuterHeight(int height) {
  const RECT area = WindowRect(Window());
  SetOuterSize(area.right - area.left, ToDots(height, dpi_));
}

void Win32Form::SetOuterSize(int width, int height) {
  SetWindowPos(Window(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Form::RaiseResizeIfChanged() {
  RECT area{};
  GetClientRect(Window(), &area);
  const Size inner{static_cast<int>(area.right), static_cast<int>(area.bottom)};
  if (inner == last_inner_) return;
  last_inner_ = inner;
  on_resize.Raise();
}

void Win32Form::ChoosePlace(const Form* owner) {
  const auto* before = dynamic_cast<const Win32Form*>(owner);
  const bool on_owner = start_ == StartPosition::kCentreOwner && before && before->Visible();
  const RECT work = WorkArea(on_owner ? before->Window() : Window());
  const RECT around = on_owner ? WindowRect(before->Window()) : work;
  const RECT own = WindowRect(Window());
  const LONG width = own.right - own.left, height = own.bottom - own.top;
  POINT place{own.left, own.top};
  if (start_ != StartPosition::kSystem) {
    place = {(around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2};
  }
  place = {std::clamp(place.x, work.left, std::max(work.left, work.right - width)),
           std::clamp(place.y, work.top, std::max(work.top, work.bottom - height))};
  if (place.x == own.left && place.y == own.top) return;
  SetWindowPos(Window(), nullptr, place.x, place.y, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

ShowCommand Win32Form::NativeShowCommand() const {
  if (IsIconic(Window())) return ShowCommand::kMinimized;
  return IsZoomed(Window()) ? ShowCommand::kMaximized : ShowCommand::kNormal;
}

int Win32Form::CommandForShow() const {
  // A window that was minimized before it was hidden is so still.
  if (IsIconic(Window())) return SW_RESTORE;
  if (visible_) return SW_SHOW;
  return kept_command_ == ShowCommand::kHide ? SW_SHOWNORMAL : static_cast<int>(kept_command_);
}

Placement Win32Form::GetPlacement() const {
  WINDOWPLACEMENT native{};
  native.length = sizeof native;
  GetWindowPlacement(Window(), &native);
  const RECT& area = native.rcNormalPosition;
  return {.left = area.left,
          .top = area.top,
          .right = area.right,
          .bottom = area.bottom,
          .show = visible_ ? NativeShowCommand() : kept_command_};
}

void Win32Form::SetPlacement(const Placement& placement) {
  WINDOWPLACEMENT native{};
  native.length = sizeof native;
  GetWindowPlacement(Window(), &native);
  const Rect place = PlaceOnScreen({placement.left, placement.top, placement.right - placement.left,
                                    placement.bottom - placement.top},
                                   WorkAreas());
  native.rcNormalPosition = {place.left, place.top, place.left + place.width,
                             place.top + place.height};
  native.showCmd = visible_ ? static_cast<UINT>(placement.show) : SW_HIDE;
  placed_ = true;
  kept_command_ = placement.show;
  SetWindowPlacement(Window(), &native);
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
  SetWindowPos(Window(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Win32Form::BringToTop() {
  // The order of the topmost windows is the one that any program may change, and a window that
  // leaves them comes to stand right behind them. (Owned by the other program's window this one
  // would stay in front as well. But the system destroys owned windows with their owner, unsaved
  // work or not, and makes both programs wait while one of them hangs.)
  SetTopmost();
  SetWindowPos(Window(), HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
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

}  // namespace declarium::win32
