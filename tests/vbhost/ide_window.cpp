#include "vbhost/ide_window.h"

#include <algorithm>

#include "win32/wide.h"

namespace declarium::vbhost {
namespace {

constexpr wchar_t kClassName[] = L"StandInIde";
constexpr int kButtonSize = 24;
constexpr int kFaceSize = 16;
constexpr int kFirstEntry = 100;

const BITMAPINFO* InfoOf(const std::vector<std::uint8_t>& bitmap) {
  return reinterpret_cast<const BITMAPINFO*>(bitmap.data());
}

const std::uint8_t* BitsOf(const std::vector<std::uint8_t>& bitmap) {
  const auto& header = InfoOf(bitmap)->bmiHeader;
  const DWORD colors = header.biClrUsed ? header.biClrUsed : 1u << header.biBitCount;
  return bitmap.data() + header.biSize + colors * sizeof(RGBQUAD);
}

void Draw(HDC device, int x, int y, const std::vector<std::uint8_t>& bitmap, DWORD operation) {
  StretchDIBits(device, x, y, kFaceSize, kFaceSize, 0, 0, kFaceSize, kFaceSize, BitsOf(bitmap),
                InfoOf(bitmap), DIB_RGB_COLORS, operation);
}

// White in the mask is transparent: the face is blacked out there, the ground everywhere else.
void DrawFace(HDC device, int x, int y, const Control& control) {
  constexpr DWORD kGroundAndNotSource = 0x00220326;
  HDC memory = CreateCompatibleDC(device);
  HBITMAP bitmap = CreateCompatibleBitmap(device, kFaceSize, kFaceSize);
  HGDIOBJ previous = SelectObject(memory, bitmap);
  Draw(memory, 0, 0, control.face, SRCCOPY);
  Draw(memory, 0, 0, control.mask, kGroundAndNotSource);
  Draw(device, x, y, control.mask, SRCAND);
  BitBlt(device, x, y, kFaceSize, kFaceSize, memory, 0, 0, SRCPAINT);
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
}

void DrawLine(HDC device, int x, int y, std::u16string_view text) {
  const std::wstring wide = win32::WideString(text);
  TEXTMETRICW metrics{};
  GetTextMetricsW(device, &metrics);
  const int tab = 4 * static_cast<int>(metrics.tmAveCharWidth);
  TabbedTextOutW(device, x, y, wide.c_str(), static_cast<int>(wide.size()), 1, &tab, x);
}

}  // namespace

IdeWindow::IdeWindow(Ide& ide, std::function<void(std::shared_ptr<Control>)> clicked,
                     std::function<void()> run_posted)
    : ide_(ide), clicked_(std::move(clicked)), run_posted_(std::move(run_posted)) {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kClassName;
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  RegisterClassW(&window_class);
  HMENU menu = CreateMenu();
  add_ins_menu_ = CreatePopupMenu();
  AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(add_ins_menu_), L"&Add-Ins");
  window_ = CreateWindowW(kClassName, L"Stand-in IDE", WS_OVERLAPPEDWINDOW, 40, 40, 640, 420,
                          nullptr, menu, window_class.hInstance, this);
  ide_.window = window_;
  ide_.changed = [this] {
    RebuildMenu();
    InvalidateRect(window_, nullptr, TRUE);
  };
}

IdeWindow::~IdeWindow() {
  ide_.changed = [] {};
  DestroyWindow(window_);
}

Bar* IdeWindow::BarNamed(std::u16string_view name) const {
  const auto found =
      std::ranges::find_if(ide_.bars, [&](const auto& bar) { return bar->name == name; });
  return found == ide_.bars.end() ? nullptr : found->get();
}

void IdeWindow::RebuildMenu() {
  while (DeleteMenu(add_ins_menu_, 0, MF_BYPOSITION)) {
  }
  const auto* bar = BarNamed(u"Add-Ins");
  UINT_PTR id = kFirstEntry;
  for (const auto& control : bar->controls) {
    AppendMenuW(add_ins_menu_, MF_STRING, id++, win32::WideString(control->caption).c_str());
  }
  DrawMenuBar(window_);
}

void IdeWindow::Paint() {
  PAINTSTRUCT paint{};
  HDC device = BeginPaint(window_, &paint);
  SetBkMode(device, TRANSPARENT);
  int x = 4;
  for (const auto& control : BarNamed(u"Standard")->controls) {
    RECT edge{x, 4, x + kButtonSize, 4 + kButtonSize};
    DrawEdge(device, &edge, BDR_RAISEDINNER, BF_RECT);
    if (!control->face.empty()) DrawFace(device, x + 4, 8, *control);
    x += kButtonSize;
  }
  PaintCode(device);
  EndPaint(window_, &paint);
}

void IdeWindow::PaintCode(HDC device) {
  RECT area{};
  GetClientRect(window_, &area);
  area.top = kButtonSize + 10;
  FillRect(device, &area, GetSysColorBrush(COLOR_WINDOW));
  if (!ide_.active_pane) return;
  SelectObject(device, GetStockObject(ANSI_FIXED_FONT));
  const auto& component = *ide_.active_pane;
  DrawLine(device, 6, area.top + 2, component.name);
  const int last = std::min(component.code.CountOfLines(),
                            component.pane.top + component.pane.visible_lines - 1);
  int y = area.top + 22;
  for (int line = component.pane.top; line <= last; ++line, y += 15) {
    std::u16string text;
    if (component.code.Lines(line, 1, text)) DrawLine(device, 16, y, text);
  }
}

bool IdeWindow::Handle(UINT message, WPARAM wide, LPARAM last) {
  const auto click = [this](const Bar& bar, std::size_t index) {
    if (index < bar.controls.size()) clicked_(bar.controls[index]);
  };
  switch (message) {
    case WM_APP:
      run_posted_();
      return true;
    case WM_PAINT:
      Paint();
      return true;
    case WM_LBUTTONUP: {
      const int x = static_cast<short>(LOWORD(last)) - 4;
      const int y = static_cast<short>(HIWORD(last)) - 4;
      if (x >= 0 && y >= 0 && y < kButtonSize) {
        click(*BarNamed(u"Standard"), static_cast<std::size_t>(x / kButtonSize));
      }
      return true;
    }
    case WM_COMMAND:
      if (LOWORD(wide) >= kFirstEntry) {
        click(*BarNamed(u"Add-Ins"), static_cast<std::size_t>(LOWORD(wide) - kFirstEntry));
      }
      return true;
    case WM_CLOSE:
      PostQuitMessage(0);
      return true;
    default:
      return false;
  }
}

LRESULT CALLBACK IdeWindow::Procedure(HWND window, UINT message, WPARAM wide, LPARAM last) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(last);
    auto* created = static_cast<IdeWindow*>(create->lpCreateParams);
    created->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* self = reinterpret_cast<IdeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self && self->Handle(message, wide, last)) return 0;
  return DefWindowProcW(window, message, wide, last);
}

}  // namespace declarium::vbhost
