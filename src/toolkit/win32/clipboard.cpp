#include "win32/clipboard.h"

#include "toolkit/win32/toolkit.h"

namespace declarium::win32 {

HWND Win32Toolkit::ClipboardOwner() const {
  if (!clipboard_owner_) {
    clipboard_owner_.Reset(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                           nullptr, GetModuleHandleW(nullptr), nullptr));
  }
  return clipboard_owner_.Get();
}

std::u16string Win32Toolkit::ClipboardText() const {
  return win32::ClipboardText(ClipboardOwner());
}

void Win32Toolkit::SetClipboardText(std::u16string_view text) {
  win32::SetClipboardText(ClipboardOwner(), text);
}

void Win32Toolkit::ClearClipboard() {
  const OpenedClipboard clipboard(ClipboardOwner());
  if (clipboard) EmptyClipboard();
}

}  // namespace declarium::win32
