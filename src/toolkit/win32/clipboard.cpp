// The text of the clipboard.
#include <cstring>

#include "toolkit/win32/toolkit.h"
#include "toolkit/win32/wide.h"

namespace declarium::win32 {

namespace {

// Open for as long as it lives. Another program may have it open for a moment.
class OpenedClipboard {
 public:
  OpenedClipboard() {
    for (int attempt = 0; attempt < 20 && !open_; ++attempt) {
      open_ = OpenClipboard(nullptr) != 0;
      if (!open_) Sleep(10);
    }
  }
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_ = false;
};

}  // namespace

std::u16string Win32Toolkit::ClipboardText() const {
  const OpenedClipboard clipboard;
  if (!clipboard) return {};
  const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const void* text = memory ? GlobalLock(memory) : nullptr;
  if (!text) return {};
  std::u16string copy = FromWide(static_cast<const wchar_t*>(text));
  GlobalUnlock(memory);
  return copy;
}

void Win32Toolkit::SetClipboardText(std::u16string_view text) {
  const OpenedClipboard clipboard;
  if (!clipboard) return;
  EmptyClipboard();
  const std::u16string terminated(text);
  const std::size_t size = (terminated.size() + 1) * sizeof(char16_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!memory) return;
  std::memcpy(GlobalLock(memory), terminated.c_str(), size);
  GlobalUnlock(memory);
  if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
}

void Win32Toolkit::ClearClipboard() {
  const OpenedClipboard clipboard;
  if (clipboard) EmptyClipboard();
}

}  // namespace declarium::win32
