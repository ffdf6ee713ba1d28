#include "toolkit/win32/clipboard.h"

#include "toolkit/win32/toolkit.h"

namespace declarium::win32 {

namespace {

// Open for as long as it lives. Another program may have it open for a moment.
class OpenedClipboard {
 public:
  // `owner` becomes the owner of what is put there; without one the system takes nothing.
  explicit OpenedClipboard(HWND owner) {
    for (int attempt = 0; attempt < 20 && !open_; ++attempt) {
      open_ = OpenClipboard(owner) != 0;
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

std::u16string TextIn(HGLOBAL memory) {
  const auto* text = static_cast<const char16_t*>(GlobalLock(memory));
  if (!text) return {};
  const std::u16string_view all(text, GlobalSize(memory) / sizeof(char16_t));
  std::u16string copy(all.substr(0, all.find(u'\0')));
  GlobalUnlock(memory);
  return copy;
}

HGLOBAL MemoryWith(std::u16string_view text) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(char16_t));
  if (!memory) return nullptr;
  auto* copy = static_cast<char16_t*>(GlobalLock(memory));
  if (!copy) return GlobalFree(memory);
  copy[text.copy(copy, text.size())] = u'\0';
  GlobalUnlock(memory);
  return memory;
}

HWND Win32Toolkit::ClipboardOwner() const {
  if (!clipboard_owner_) {
    clipboard_owner_.Reset(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                           nullptr, GetModuleHandleW(nullptr), nullptr));
  }
  return clipboard_owner_.Get();
}

std::u16string Win32Toolkit::ClipboardText() const {
  const OpenedClipboard clipboard(ClipboardOwner());
  const HANDLE memory = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  return memory ? TextIn(memory) : std::u16string();
}

void Win32Toolkit::SetClipboardText(std::u16string_view text) {
  const OpenedClipboard clipboard(ClipboardOwner());
  if (!clipboard) return;
  EmptyClipboard();
  const HGLOBAL memory = MemoryWith(text);
  if (memory && !SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
}

void Win32Toolkit::ClearClipboard() {
  const OpenedClipboard clipboard(ClipboardOwner());
  if (clipboard) EmptyClipboard();
}

}  // namespace declarium::win32
