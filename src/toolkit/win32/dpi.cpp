#include "toolkit/win32/dpi.h"

namespace declarium::win32 {

namespace {

template <class Function>
void Find(HMODULE library, const char* name, Function*& found) {
  const FARPROC address = library ? GetProcAddress(library, name) : nullptr;
  // Through a type without parameters, which stands for any function.
  found = reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(address));
}

}  // namespace

ScreenFunctions::ScreenFunctions(HMODULE library) {
  Find(library, "GetDpiForSystem", system_dpi_);
  Find(library, "GetDpiForWindow", window_dpi_);
  Find(library, "AdjustWindowRectExForDpi", add_borders_);
  Find(library, "SystemParametersInfoForDpi", read_metrics_);
}

int ScreenFunctions::SystemDpi() const {
  if (system_dpi_) return static_cast<int>(system_dpi_());
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi;
}

int ScreenFunctions::WindowDpi(HWND window) const {
  return window_dpi_ ? static_cast<int>(window_dpi_(window)) : SystemDpi();
}

void ScreenFunctions::AddBorders(RECT& area, DWORD style, DWORD extended_style, bool has_menu,
                                 int dpi) const {
  if (add_borders_) {
    add_borders_(&area, style, has_menu, extended_style, static_cast<UINT>(dpi));
  } else {
    AdjustWindowRectEx(&area, style, has_menu, extended_style);
  }
}

LOGFONTW ScreenFunctions::MessageFont(int dpi) const {
  NONCLIENTMETRICSW metrics{};
  const UINT size = metrics.cbSize = sizeof metrics;
  if (read_metrics_) {
    if (read_metrics_(SPI_GETNONCLIENTMETRICS, size, &metrics, 0, static_cast<UINT>(dpi))) {
      return metrics.lfMessageFont;
    }
  } else if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, size, &metrics, 0)) {
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, SystemDpi());
    return metrics.lfMessageFont;
  }
  LOGFONTW font{};
  font.lfHeight = -MulDiv(9, dpi, 72);
  return font;
}

const ScreenFunctions& Screens() {
  static const ScreenFunctions functions(GetModuleHandleW(L"user32.dll"));
  return functions;
}

}  // namespace declarium::win32
