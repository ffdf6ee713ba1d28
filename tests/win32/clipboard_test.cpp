#include "win32/clipboard.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace declarium::win32 {
namespace {

TEST(ClipboardMemory, TextIsReadNoFurtherThanItsMemory) {
  const UniqueGlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, 64));
  const std::size_t units = GlobalSize(memory.Get()) / sizeof(char16_t);
  auto* text = static_cast<char16_t*>(GlobalLock(memory.Get()));
  std::fill_n(text, units, u'x');
  EXPECT_EQ(TextIn(memory.Get()), std::u16string(units, u'x'));
  text[3] = u'\0';
  EXPECT_EQ(TextIn(memory.Get()), u"xxx");
  GlobalUnlock(memory.Get());
}

TEST(ClipboardMemory, TextIsGivenBackAsItWas) {
  for (const std::u16string_view text :
       {std::u16string_view(), std::u16string_view(u"Const Žltý = 1\r\n")}) {
    EXPECT_EQ(TextIn(MemoryWith(text).Get()), text);
  }
}

TEST(ClipboardMemory, BytesAreGivenBackAsTheyWere) {
  const std::vector<std::uint8_t> bytes = {0, 1, 0xFF, 0};
  auto back = BytesIn(MemoryWith(bytes).Get()).value();
  ASSERT_GE(back.size(), bytes.size()) << "the system may round a block's size up";
  back.resize(bytes.size());
  EXPECT_EQ(back, bytes);
  EXPECT_TRUE(MemoryWith(std::span<const std::uint8_t>())) << "no bytes are a block, too";
}

TEST(ClipboardMemory, WhatIsNoBlockIsNotRead) {
  EXPECT_FALSE(BytesIn(nullptr));
  EXPECT_EQ(TextIn(nullptr), u"");
}

// A window of this thread that owns what is put on the clipboard.
class ClipboardTextTest : public testing::Test {
 protected:
  UniqueWindow owner_{CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr)};
};

TEST_F(ClipboardTextTest, TextComesBack) {
  ASSERT_TRUE(SetClipboardText(owner_.Get(), u"Const Žltý = 1"));
  EXPECT_EQ(ClipboardText(owner_.Get()), u"Const Žltý = 1");
}

TEST_F(ClipboardTextTest, AClipboardThatIsOpenElsewhereIsNotOpened) {
  // A clipboard that this thread opened for one window is in the way of another's.
  const UniqueWindow other(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                           nullptr, nullptr, nullptr));
  const OpenedClipboard first(owner_.Get());
  ASSERT_TRUE(first);
  EXPECT_EQ(first.Error(), DWORD{ERROR_SUCCESS});
  const OpenedClipboard second(other.Get());
  EXPECT_FALSE(second);
  EXPECT_NE(second.Error(), DWORD{ERROR_SUCCESS});
}

}  // namespace
}  // namespace declarium::win32
