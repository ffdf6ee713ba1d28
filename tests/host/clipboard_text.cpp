#include "host/clipboard_text.h"

#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>

#include "host/ide_driver.h"

namespace declarium {
namespace {

// Another program may have it open for a moment.
void Open() {
  EXPECT_TRUE(Eventually([] { return OpenClipboard(nullptr) != FALSE; }));
}

}  // namespace

std::wstring ClipboardText() {
  std::wstring text;
  Open();
  if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(memory));
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return text;
}

void SetClipboardText(const std::wstring& text) {
  Open();
  EmptyClipboard();
  const auto bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  std::memcpy(GlobalLock(memory), text.c_str(), bytes);
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();
}

}  // namespace declarium
