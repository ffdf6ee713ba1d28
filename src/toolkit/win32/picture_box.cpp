#include "toolkit/win32/picture_box.h"

#include <algorithm>

#include "toolkit/win32/icons.h"
#include "toolkit/win32/scale.h"

namespace declarium::win32 {

namespace {

const wchar_t* PictureClass() {
  static const wchar_t* const name = [] {
    WNDCLASSEXW native{};
    native.cbSize = sizeof native;
    native.style = CS_DBLCLKS;
    native.lpfnWndProc = DefWindowProcW;
    native.hInstance = GetModuleHandleW(nullptr);
    native.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    native.lpszClassName = L"DeclariumPicture";
    RegisterClassExW(&native);
    return native.lpszClassName;
  }();
  return name;
}

// Ends the painting also when drawing fails: the system asks for what is not painted without end.
class Painting {
 public:
  explicit Painting(HWND window) : window_(window) { BeginPaint(window_, &paint_); }
  ~Painting() { EndPaint(window_, &paint_); }
  Painting(const Painting&) = delete;
  Painting& operator=(const Painting&) = delete;
  [[nodiscard]] HDC Device() const { return paint_.hdc; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
};

// An object selected into a device; the one before comes back at the end.
class Selection {
 public:
  Selection(HDC device, HGDIOBJ object) : device_(device), before_(SelectObject(device, object)) {}
  ~Selection() { SelectObject(device_, before_); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

 private:
  HDC device_;
  HGDIOBJ before_;
};

}  // namespace

void DeviceCanvas::Fill(const Rect& area, Color color) {
  const RECT physical = ToPhysical(area, dpi_);
  const UniqueBrush brush(CreateSolidBrush(ToColorRef(color)));
  FillRect(device_, &physical, brush.Get());
}

void DeviceCanvas::Invert(const Rect& area) {
  const RECT physical = ToPhysical(area, dpi_);
  InvertRect(device_, &physical);
}

void DeviceCanvas::WriteText(const Rect& area, std::u16string_view text, FontRole font, Color color,
                             Alignment alignment) {
  const std::u16string terminated(text);
  const Selection selected(device_, fonts_.Get(font));
  SetBkMode(device_, TRANSPARENT);
  SetTextColor(device_, ToColorRef(color));
  const UINT flags = DT_NOPREFIX | (alignment == Alignment::kCentre ? DT_CENTER : DT_LEFT);
  const RECT whole = ToPhysical(area, dpi_);
  RECT needed = whole;
  DrawTextW(device_, Wide(terminated), -1, &needed, flags | DT_CALCRECT);
  RECT place = whole;
  place.top += std::max<LONG>((whole.bottom - whole.top - (needed.bottom - needed.top)) / 2, 0);
  DrawTextW(device_, Wide(terminated), -1, &place, flags);
}

void DeviceCanvas::DrawPicture(const Rect& area, Icon icon) {
  const RECT physical = ToPhysical(area, dpi_);
  const LONG size = std::min(physical.right - physical.left, physical.bottom - physical.top);
  const UniqueIcon picture = DrawIconPicture(icon, size);
  DrawIconEx(device_, physical.left + (physical.right - physical.left - size) / 2,
             physical.top + (physical.bottom - physical.top - size) / 2, picture.Get(), size, size,
             0, nullptr, DI_NORMAL);
}

Win32PictureBox::Win32PictureBox(Win32Form& form, const ControlDefinition& definition)
    : Win32Control(form, definition, {PictureClass(), WS_CLIPSIBLINGS}),
      back_color_(definition.back_color) {}

void Win32PictureBox::SetBackColor(Color color) {
  back_color_ = color;
  Invalidate();
}

void Win32PictureBox::PostMouseDown() {
  PostMessageW(Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0, 0));
}

// The presses that PostMouseDown posts are the program's own.
bool Win32PictureBox::IsInput(UINT message) const {
  return message != WM_LBUTTONDOWN && Win32Control::IsInput(message);
}

void Win32PictureBox::Paint() {
  const Painting painting(Handle());
  const HDC screen = painting.Device();
  RECT area;
  GetClientRect(Handle(), &area);
  const UniqueDevice memory(CreateCompatibleDC(screen));
  const UniqueBitmap bitmap(CreateCompatibleBitmap(screen, std::max<LONG>(area.right, 1),
                                                   std::max<LONG>(area.bottom, 1)));
  const Selection selected(memory.Get(), bitmap.Get());
  const UniqueBrush background(CreateSolidBrush(ToColorRef(back_color_)));
  FillRect(memory.Get(), &area, background.Get());
  DeviceCanvas canvas(memory.Get(), {PlacedAt().width, PlacedAt().height}, Dpi(),
                      TheForm().TheFonts());
  on_paint.Raise(canvas);
  BitBlt(screen, 0, 0, area.right, area.bottom, memory.Get(), 0, 0, SRCCOPY);
}

// No release follows a press that was posted.
void Win32PictureBox::CaptureWhileHeld() const {
  if (GetKeyState(VK_LBUTTON) < 0) SetCapture(Handle());
}

std::optional<LRESULT> Win32PictureBox::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_NCPAINT:  // it has no border
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_LBUTTONDOWN:
      SetFocus();
      CaptureWhileHeld();
      break;
    case WM_LBUTTONDBLCLK:
      CaptureWhileHeld();
      break;
    case WM_LBUTTONUP:
      if (GetCapture() == Handle()) ReleaseCapture();
      break;
    default:
      break;
  }
  return Win32Control::OnMessage(message, wparam, lparam);
}

}  // namespace declarium::win32
