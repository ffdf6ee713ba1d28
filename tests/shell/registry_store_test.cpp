#include "shell/registry_store.h"

#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "shell/settings.h"

namespace declarium {
namespace {

using namespace std::string_literals;

// A key of this process alone, which is gone afterwards.
class RegistryStoreTest : public testing::Test {
 protected:
  RegistryStoreTest()
      : key_(L"Software\\Declarium tests\\" + std::to_wstring(::GetCurrentProcessId())) {
    Remove();
  }
  ~RegistryStoreTest() override { Remove(); }

  void Remove() const { ::RegDeleteTreeW(HKEY_CURRENT_USER, key_.c_str()); }
  [[nodiscard]] std::u16string Key() const { return {key_.begin(), key_.end()}; }

  // As another program would have stored it.
  void Put(const wchar_t* name, DWORD type, std::string_view bytes) const {
    ASSERT_TRUE(RegistryStore().CreateKey(Key()));
    ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name, type, bytes.data(),
                                static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }
  // The type's number and the bytes that stand in the registry.
  [[nodiscard]] std::pair<DWORD, std::string> Stored(const wchar_t* name) const {
    DWORD type = 0;
    char bytes[100] = {};
    DWORD size = sizeof bytes;
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, key_.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
      return {};
    }
    const LSTATUS status =
        ::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size);
    ::RegCloseKey(key);
    if (status != ERROR_SUCCESS) return {};
    return {type, std::string(bytes, size)};
  }

  std::wstring key_;
  RegistryStore store_;
};

TEST_F(RegistryStoreTest, GivesTheDefaultWithoutKeyOrValue) {
  EXPECT_EQ(store_.GetValue(Key(), u"A", 5), SettingValue(5));
  ASSERT_TRUE(store_.CreateKey(Key()));
  EXPECT_EQ(store_.GetValue(Key(), u"A", u"x"s), SettingValue(u"x"s));
}

TEST_F(RegistryStoreTest, WritesTheTypesThatTheRegistryKnows) {
  ASSERT_TRUE(store_.SetValue(Key(), u"Number", ValueType::kInteger, 0xFF0000));
  ASSERT_TRUE(store_.SetValue(Key(), u"Text", ValueType::kText, u"Až"s));
  ASSERT_TRUE(store_.SetValue(Key(), u"Bytes", ValueType::kBinary, u"ab"s));
  EXPECT_EQ(Stored(L"Number"), std::pair(DWORD{REG_DWORD}, "\0\0\xFF\0"s));
  EXPECT_EQ(Stored(L"Text"), std::pair(DWORD{REG_SZ}, "A\0\x7E\x01\0\0"s));
  EXPECT_EQ(Stored(L"Bytes"), std::pair(DWORD{REG_BINARY}, "ab"s));
}

TEST_F(RegistryStoreTest, ReturnsExactlyWhatWasWritten) {
  for (const auto& text : {u""s, u"a"s, u"Moja databáza č. 1"s, u"日本"s, u" x \r\n"s, u"\xD800"s,
                           std::u16string(5000, u'ľ')}) {
    ASSERT_TRUE(store_.SetValue(Key(), u"Text", ValueType::kText, text));
    EXPECT_EQ(store_.GetValue(Key(), u"Text", 1), SettingValue(text));
  }
  for (const int number : {0, 1, -1, 2147483647, -2147483647 - 1}) {
    ASSERT_TRUE(store_.SetValue(Key(), u"Number", ValueType::kInteger, number));
    EXPECT_EQ(store_.GetValue(Key(), u"Number", u"x"s), SettingValue(number));
  }
}

TEST_F(RegistryStoreTest, ReadsTextThatAnEarlierVersionWroteThroughTheAnsiFunctions) {
  ASSERT_TRUE(store_.CreateKey(Key()));
  const std::string key(key_.begin(), key_.end());
  HKEY open = nullptr;
  ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_SET_VALUE, &open),
            ERROR_SUCCESS);
  const LSTATUS status =
      ::RegSetValueExA(open, "Text", 0, REG_SZ, reinterpret_cast<const BYTE*>("Win32!"), 5);
  ::RegCloseKey(open);
  ASSERT_EQ(status, ERROR_SUCCESS);
  EXPECT_EQ(store_.GetValue(Key(), u"Text", {}), SettingValue(u"Win32"s));
}

TEST_F(RegistryStoreTest, ReadsTextThatWasStoredWithoutItsTerminator) {
  Put(L"Text", REG_SZ, "W\0i\0n\0"s);
  EXPECT_EQ(store_.GetValue(Key(), u"Text", {}), SettingValue(u"Win"s));
}

TEST_F(RegistryStoreTest, ReturnsOtherTypesAsAnEmptyValue) {
  Put(L"Expandable", REG_EXPAND_SZ, "%\0\0\0"s);
  EXPECT_EQ(store_.GetValue(Key(), u"Expandable", 5), SettingValue());
}

TEST_F(RegistryStoreTest, FailsWhereTheKeyCannotBeMade) {
  EXPECT_FALSE(store_.CreateKey(std::u16string(300, u'x')));
  EXPECT_FALSE(store_.SetValue(std::u16string(300, u'x'), u"A", ValueType::kInteger, 1));
}

TEST_F(RegistryStoreTest, LeavesNoKeyOpen) {
  DWORD before = 0;
  DWORD after = 0;
  ASSERT_TRUE(store_.SetValue(Key(), u"A", ValueType::kInteger, 1));
  ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &before));
  for (int i = 0; i < 1000; ++i) {
    ASSERT_TRUE(store_.SetValue(Key(), u"A", ValueType::kInteger, i));
    ASSERT_EQ(store_.GetValue(Key(), u"A", {}), SettingValue(i));
    ASSERT_EQ(store_.GetValue(Key() + u"\\none", u"A", 7), SettingValue(7));
  }
  ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &after));
  EXPECT_LE(after, before + 10);
}

}  // namespace
}  // namespace declarium
