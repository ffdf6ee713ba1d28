#include "toolkit/win32/tool_tips.h"

#include "toolkit/win32/widget.h"
#include "win32/wide.h"

namespace declarium::win32 {

void ToolTips::PointerArrived(HWND form, const std::vector<Widget*>& widgets) {
  if (form_) return;
  form_ = form;
  for (const Widget* widget : widgets) Set(widget->Handle(), widget->TheControl().ToolTip());
}

void ToolTips::Set(HWND control, const std::u16string& text) {
  if (!form_) return;
  if (!window_) {
    // A form without tooltips owns no window for them: owned windows keep a form from becoming
    // topmost on some systems.
    if (text.empty()) return;
    window_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP,
                                  0, 0, 0, 0, form_, nullptr, GetModuleHandleW(nullptr), nullptr));
  }
  std::u16string shown = text;
  TTTOOLINFOW info{};
  info.cbSize = sizeof info;
  info.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
  info.hwnd = form_;
  info.uId = reinterpret_cast<UINT_PTR>(control);
  SendMessageW(window_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
  info.lpszText = WideBuffer(shown);
  if (!text.empty()) SendMessageW(window_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

}  // namespace declarium::win32
