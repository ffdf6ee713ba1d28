#include "shell/settings_store.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "shell/memory_store.h"

namespace declarium {
namespace {

using namespace std::string_literals;

constexpr std::u16string_view kStoreKey = u"Software\\Test";

std::string Hex(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const char byte : bytes) {
    hex += kDigits[static_cast<unsigned char>(byte) >> 4];
    hex += kDigits[byte & 0xF];
  }
  return hex;
}

TEST(SettingsStore, CreatesTheKeyBeforeItWrites) {
  MemoryStore store;
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, 1));
  EXPECT_EQ(store.created, std::vector<std::u16string>{std::u16string(kStoreKey)});
  EXPECT_EQ(store.written, std::vector<std::u16string>{u"A"});
}

TEST(SettingsStore, StoresIntegersAsFourBytesLowByteFirst) {
  MemoryStore store;
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, 0x01020304));
  EXPECT_TRUE(store.SetValue(kStoreKey, u"B", ValueType::kInteger, -1));
  EXPECT_EQ(store.Type(kStoreKey, u"A"), 4U);
  EXPECT_EQ(Hex(store.Bytes(kStoreKey, u"A")), "04030201");
  EXPECT_EQ(Hex(store.Bytes(kStoreKey, u"B")), "ffffffff");
  EXPECT_EQ(store.GetValue(kStoreKey, u"B", {}), SettingValue(-1));
}

TEST(SettingsStore, StoresTextInUtf16WithItsTerminator) {
  MemoryStore store;
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kText, u"Až"s));
  EXPECT_EQ(store.Type(kStoreKey, u"A"), 1U);
  EXPECT_EQ(Hex(store.Bytes(kStoreKey, u"A")), "41007e010000");
}

TEST(SettingsStore, ReturnsTextExactlyAsItWasWritten) {
  MemoryStore store;
  for (const auto& text : {u""s, u"a"s, u"Databáza č. 1"s, u"\xD800"s, u"a\0b"s, u"a\0"s, u"\0"s,
                           u" a\r\n"s, u"日本"s}) {
    ASSERT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kText, text));
    EXPECT_EQ(store.GetValue(kStoreKey, u"A", 7), SettingValue(text));
  }
}

TEST(SettingsStore, ReadsTextThatWasStoredWithoutItsTerminator) {
  MemoryStore store;
  store.Put(kStoreKey, u"A", 1, "W\0i\0n\0"s);
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u"Win"s));
  store.Put(kStoreKey, u"A", 1, "");
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u""s));
}

TEST(SettingsStore, PassesOverHalfACharacterAtTheEndOfText) {
  MemoryStore store;
  store.Put(kStoreKey, u"A", 1, "W\0i"s);
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u"W"s));
}

TEST(SettingsStore, ReturnsTheWholeOfABinaryValueAsText) {
  MemoryStore store;
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kBinary, u"ž\0"s));
  EXPECT_EQ(store.Type(kStoreKey, u"A"), 3U);
  EXPECT_EQ(Hex(store.Bytes(kStoreKey, u"A")), "9e00");
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u"ž\0"s));
}

TEST(SettingsStore, ReturnsAValueInTheTypeInWhichItIsStored) {
  MemoryStore store;
  ASSERT_TRUE(store.SetValue(kStoreKey, u"Text", ValueType::kText, u"abcdefgh"s));
  ASSERT_TRUE(store.SetValue(kStoreKey, u"Number", ValueType::kInteger, 5));
  EXPECT_EQ(store.GetValue(kStoreKey, u"Text", 3), SettingValue(u"abcdefgh"s));
  EXPECT_EQ(store.GetValue(kStoreKey, u"Number", u"x"s), SettingValue(5));
}

TEST(SettingsStore, ReturnsAnEmptyValueForOtherTypesAndBrokenIntegers) {
  MemoryStore store;
  store.Put(kStoreKey, u"Expandable", 2, "%\0\0\0"s);
  store.Put(kStoreKey, u"Quad", 11, "12345678");
  store.Put(kStoreKey, u"Short", 4, "12");
  store.Put(kStoreKey, u"Long", 4, "12345");
  for (const auto* name : {u"Expandable", u"Quad", u"Short", u"Long"}) {
    EXPECT_EQ(store.GetValue(kStoreKey, name, 9), SettingValue());
  }
}

TEST(SettingsStore, ReturnsTheDefaultForAMissingValueAndAFailedRead) {
  MemoryStore store;
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", 9), SettingValue(9));
  ASSERT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, 1));
  store.fails = true;
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", u"x"s), SettingValue(u"x"s));
}

TEST(SettingsStore, TellsWhetherTheWriteSucceeded) {
  MemoryStore store;
  store.fails = true;
  EXPECT_FALSE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, 1));
}

TEST(SettingsStore, ConvertsAValueToTheTypeThatIsToBeStored) {
  MemoryStore store;
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, u"-12"s));
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(-12));
  EXPECT_TRUE(store.SetValue(kStoreKey, u"A", ValueType::kText, -12));
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u"-12"s));
  EXPECT_FALSE(store.SetValue(kStoreKey, u"A", ValueType::kInteger, u"twelve"s));
  EXPECT_EQ(store.GetValue(kStoreKey, u"A", {}), SettingValue(u"-12"s));
}

TEST(SettingsStore, ReadsIntegersOutOfTextsOfNumbers) {
  struct Case {
    SettingValue value;
    std::optional<std::int32_t> integer;
  };
  const Case cases[] = {
      {{}, 0},
      {7, 7},
      {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min()},
      {u"7"s, 7},
      {u" -7 "s, -7},
      {u"2.5"s, 2},
      {u"3.5"s, 4},
      {u"2147483647"s, 2147483647},
      {u"2147483648"s, std::nullopt},
      {u"-2147483649"s, std::nullopt},
      {u"1E+300"s, std::nullopt},
      {u""s, std::nullopt},
      {u"x"s, std::nullopt},
      {u"7x"s, std::nullopt},
  };
  for (const auto& [value, integer] : cases) EXPECT_EQ(ToInteger(value), integer);
}

TEST(SettingsStore, WritesIntegersAsDecimalText) {
  EXPECT_EQ(ToText({}), u"");
  EXPECT_EQ(ToText(-2147483647), u"-2147483647");
  EXPECT_EQ(ToText(u"abc"s), u"abc");
}

}  // namespace
}  // namespace declarium
