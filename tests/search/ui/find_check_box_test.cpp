#include "search/find_check_box.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

struct Case {
  std::u16string_view stored;
  std::u16string_view shown;
};

TEST(FindCheckBox, MissingAndInvalidPositionsHaveTheirDefaults) {
  const Case cases[] = {
      {u"", u"1110111011"},
      {u"0000000000", u"0000000000"},
      {u"2222222222", u"2222222222"},
      {u"0101010101", u"0101010101"},
      {u"0", u"0110111011"},
      {u"00012", u"0001211011"},
      {u"999x999 99", u"1110111011"},
      {u"x0x1x0x1x0", u"1011101110"},
      {u"\xD83D\xDE00\u0661\0\0", u"1110111011"},
      {u"00000000001111", u"0000000000"},
      {u"-1-1-1-1-1", u"1111111111"},
  };
  for (const auto& [stored, shown] : cases) {
    EXPECT_EQ(FindCheckBoxText(ReadFindCheckBoxes(stored)), shown);
  }
}

TEST(FindCheckBox, WhatIsWrittenIsReadBack) {
  const FindCheckBoxes values = {0, 1, 2, 0, 1, 2, 0, 1, 2, 0};
  EXPECT_EQ(FindCheckBoxText(values), u"0120120120");
  EXPECT_EQ(ReadFindCheckBoxes(u"0120120120"), values);
}

}  // namespace
}  // namespace declarium
