#include "host/clipboard_text.h"

#include <gtest/gtest.h>

#include "win32/clipboard.h"

namespace declarium {

std::u16string ClipboardText() {
  return win32::ClipboardText(nullptr);
}

void SetClipboardText(std::u16string_view text) {
  const win32::UniqueWindow owner(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0,
                                                  HWND_MESSAGE, nullptr, nullptr, nullptr));
  EXPECT_TRUE(win32::SetClipboardText(owner.Get(), text));
}

}  // namespace declarium
