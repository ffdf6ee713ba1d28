#include "shell/registry_store.h"

#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "shell/settings.h"
#include "vb/number.h"
#include "win32/system_registry.h"
#include "win32/unique_handle.h"

namespace declarium {
namespace {

using namespace std::string_literals;

// A key of this process alone, which is gone afterwards.
class RegistryStoreTest : public testing::Test {
 protected:
  RegistryStoreTest() { Remove(); }
  ~RegistryStoreTest() override { Remove(); }

  void Remove() { EXPECT_TRUE(registry_.DeleteTree(RegistryRoot::kCurrentUser, key_)); }

  // As another program would have stored it.
  void Put(std::u16string_view name, const RegistryValue& value) {
    ASSERT_TRUE(registry_.Write(RegistryRoot::kCurrentUser, key_, name, value));
  }
  [[nodiscard]] std::optional<RegistryValue> Stored(std::u16string_view name) const {
    return registry_.Read(RegistryRoot::kCurrentUser, key_, name);
  }

  const std::u16string key_ = u"Software\\Declarium tests\\" + NumberText(::GetCurrentProcessId());
  win32::SystemRegistry registry_;
  RegistryStore store_{registry_};
};

TEST_F(RegistryStoreTest, GivesTheDefaultWithoutKeyOrValue) {
  EXPECT_EQ(store_.GetValue(key_, u"A", 5), SettingValue(5));
  ASSERT_TRUE(store_.CreateKey(key_));
  EXPECT_EQ(store_.GetValue(key_, u"A", u"x"s), SettingValue(u"x"s));
}

TEST_F(RegistryStoreTest, WritesTheTypesThatTheRegistryKnows) {
  ASSERT_TRUE(store_.SetValue(key_, u"Number", ValueType::kInteger, 0xFF0000));
  ASSERT_TRUE(store_.SetValue(key_, u"Text", ValueType::kText, u"Až"s));
  ASSERT_TRUE(store_.SetValue(key_, u"Bytes", ValueType::kBinary, u"ab"s));
  EXPECT_EQ(Stored(u"Number"), (RegistryValue{REG_DWORD, "\0\0\xFF\0"s}));
  EXPECT_EQ(Stored(u"Text"), (RegistryValue{REG_SZ, "A\0\x7E\x01\0\0"s}));
  EXPECT_EQ(Stored(u"Bytes"), (RegistryValue{REG_BINARY, "ab"s}));
}

TEST_F(RegistryStoreTest, ReturnsExactlyWhatWasWritten) {
  for (const auto& text : {u""s, u"a"s, u"Moja databáza č. 1"s, u"日本"s, u" x \r\n"s, u"\xD800"s,
                           std::u16string(5000, u'ľ')}) {
    ASSERT_TRUE(store_.SetValue(key_, u"Text", ValueType::kText, text));
    EXPECT_EQ(store_.GetValue(key_, u"Text", 1), SettingValue(text));
  }
  for (const int number : {0, 1, -1, 2147483647, -2147483647 - 1}) {
    ASSERT_TRUE(store_.SetValue(key_, u"Number", ValueType::kInteger, number));
    EXPECT_EQ(store_.GetValue(key_, u"Number", u"x"s), SettingValue(number));
  }
}

TEST_F(RegistryStoreTest, ReadsTextThatAnEarlierVersionWroteThroughTheAnsiFunctions) {
  ASSERT_TRUE(store_.CreateKey(key_));
  const std::string key(key_.begin(), key_.end());
  win32::UniqueRegistryKey open;
  ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_SET_VALUE, open.Receive()),
            ERROR_SUCCESS);
  ASSERT_EQ(
      ::RegSetValueExA(open.Get(), "Text", 0, REG_SZ, reinterpret_cast<const BYTE*>("Win32!"), 5),
      ERROR_SUCCESS);
  EXPECT_EQ(store_.GetValue(key_, u"Text", {}), SettingValue(u"Win32"s));
}

TEST_F(RegistryStoreTest, ReadsTextThatWasStoredWithoutItsTerminator) {
  Put(u"Text", {REG_SZ, "W\0i\0n\0"s});
  EXPECT_EQ(store_.GetValue(key_, u"Text", {}), SettingValue(u"Win"s));
}

TEST_F(RegistryStoreTest, ReturnsOtherTypesAsAnEmptyValue) {
  Put(u"Expandable", {REG_EXPAND_SZ, "%\0\0\0"s});
  EXPECT_EQ(store_.GetValue(key_, u"Expandable", 5), SettingValue());
}

TEST_F(RegistryStoreTest, FailsWhereTheKeyCannotBeMade) {
  EXPECT_FALSE(store_.CreateKey(std::u16string(300, u'x')));
  EXPECT_FALSE(store_.SetValue(std::u16string(300, u'x'), u"A", ValueType::kInteger, 1));
}

TEST_F(RegistryStoreTest, LeavesNoKeyOpen) {
  DWORD before = 0;
  DWORD after = 0;
  ASSERT_TRUE(store_.SetValue(key_, u"A", ValueType::kInteger, 1));
  ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &before));
  for (int i = 0; i < 1000; ++i) {
    ASSERT_TRUE(store_.SetValue(key_, u"A", ValueType::kInteger, i));
    ASSERT_EQ(store_.GetValue(key_, u"A", {}), SettingValue(i));
    ASSERT_EQ(store_.GetValue(key_ + u"\\none", u"A", 7), SettingValue(7));
  }
  ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &after));
  EXPECT_LE(after, before + 10);
}

}  // namespace
}  // namespace declarium
