#include "win32/registry_value.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

using namespace std::string_literals;

TEST(RegistryValue, TextIsStoredWithItsTerminator) {
  EXPECT_EQ(TextValue(u"Až"), (RegistryValue{1, "A\0\x7E\x01\0\0"s}));
  EXPECT_EQ(TextValue(u""), (RegistryValue{1, "\0\0"s}));
}

TEST(RegistryValue, TextIsReadWithAndWithoutItsTerminator) {
  EXPECT_EQ(TextOf({1, "A\0B\0\0\0"s}), u"AB");
  EXPECT_EQ(TextOf({1, "A\0B\0"s}), u"AB");
  EXPECT_EQ(TextOf({2, "A\0"s}), u"A");
  EXPECT_EQ(TextOf({1, ""s}), u"");
}

TEST(RegistryValue, HalfAUnitAtTheEndIsPassedOver) {
  EXPECT_EQ(TextOf({1, "A\0B"s}), u"A");
}

TEST(RegistryValue, NumbersAreFourBytesLowestFirst) {
  EXPECT_EQ(NumberValue(0x80FF0001), (RegistryValue{4, "\x01\0\xFF\x80"s}));
  for (const std::uint32_t number : {0u, 1u, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(NumberOf(NumberValue(number)), number);
  }
}

TEST(RegistryValue, OtherTypesAndSizesAreNoNumbers) {
  EXPECT_FALSE(NumberOf({1, "\0\0\0\0"s}));
  EXPECT_FALSE(NumberOf({4, "\0\0\0"s}));
  EXPECT_FALSE(NumberOf({4, "\0\0\0\0\0"s}));
}

}  // namespace
}  // namespace declarium
