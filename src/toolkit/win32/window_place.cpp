#include "toolkit/win32/window_place.h"

#include <algorithm>
#include <vector>

#include "toolkit/screen_place.h"

namespace declarium::win32 {

namespace {

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

WINDOWPLACEMENT NativePlacement(HWND window) {
  WINDOWPLACEMENT native{};
  native.length = sizeof native;
  GetWindowPlacement(window, &native);
  return native;
}

}  // namespace

RECT WindowRect(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return area;
}

Size InnerSize(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void SetOuterSize(HWND window, int width, int height) {
  SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ChoosePlace(HWND window, StartPosition start, HWND owner) {
  const bool on_owner = start == StartPosition::kCentreOwner && owner;
  const RECT work = WorkArea(on_owner ? owner : window);
  const RECT around = on_owner ? WindowRect(owner) : work;
  const RECT own = WindowRect(window);
  const LONG width = own.right - own.left, height = own.bottom - own.top;
  POINT place{own.left, own.top};
  if (start != StartPosition::kSystem) {
    place = {(around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2};
  }
  place = {std::clamp(place.x, work.left, std::max(work.left, work.right - width)),
           std::clamp(place.y, work.top, std::max(work.top, work.bottom - height))};
  if (place.x == own.left && place.y == own.top) return;
  SetWindowPos(window, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

ShowCommand ShowCommandOf(HWND window) {
  if (IsIconic(window)) return ShowCommand::kMinimized;
  return IsZoomed(window) ? ShowCommand::kMaximized : ShowCommand::kNormal;
}

RECT NormalPlace(HWND window) {
  return NativePlacement(window).rcNormalPosition;
}

void SetNormalPlace(HWND window, const Placement& placement, UINT command) {
  WINDOWPLACEMENT native = NativePlacement(window);
  const Rect place = PlaceOnScreen({placement.left, placement.top, placement.right - placement.left,
                                    placement.bottom - placement.top},
                                   WorkAreas());
  native.rcNormalPosition = {place.left, place.top, place.left + place.width,
                             place.top + place.height};
  native.showCmd = command;
  SetWindowPlacement(window, &native);
}

void SetTopmost(HWND window) {
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void BringToTop(HWND window) {
  // The order of the topmost windows is the one that any program may change, and a window that
  // leaves them comes to stand right behind them. (Owned by the other program's window this one
  // would stay in front as well. But the system destroys owned windows with their owner, unsaved
  // work or not, and makes both programs wait while one of them hangs.)
  SetTopmost(window);
  SetWindowPos(window, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace declarium::win32
