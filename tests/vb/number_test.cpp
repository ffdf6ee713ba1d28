#include "vb/number.h"

#include <cmath>
#include <gtest/gtest.h>

#include "support/texts.h"

namespace declarium {
namespace {

struct ValCase {
  std::u16string_view text;
  double value;
};

TEST(Val, ReadsTheLongestNumericBeginning) {
  const ValCase cases[] = {
      {u"", 0},
      {u"abc", 0},
      {u"5", 5},
      {u"12abc", 12},
      {u"-3", -3},
      {u"+3", 3},
      {u"--3", 0},
      {u"1.5", 1.5},
      {u".5", 0.5},
      {u"-.5", -0.5},
      {u"5.", 5},
      {u".", 0},
      {u"1.5.5", 1.5},
      {u"1,5", 1},
      {u"10#", 10},
      {u"007", 7},
      {u"1e3", 1000},
      {u"1E3", 1000},
      {u"1d3", 1000},
      {u"1D+3", 1000},
      {u"25e-1", 2.5},
      {u"1e", 1},
      {u"1e+", 1},
      {u"1ex", 1},
      {u"e3", 0},
      {u".e3", 0},
      {u"1e3e3", 1000},
      {u"-0", 0},
      {u"0e999999", 0},
      {u"1e-999", 0},
      {u"1e-99999999999999999999", 0},
  };
  for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.value) << testing::PrintToString(c.text);
}

TEST(Val, RemovesBlanksTabsAndLineFeedsFirst) {
  EXPECT_EQ(Val(u" 1 2\t3\n4 "), 1234);
  EXPECT_EQ(Val(u"1\r2"), 1) << "a carriage return ends the number";
  EXPECT_EQ(Val(u"- 5"), -5);
  EXPECT_EQ(Val(u"&H10 And 1"), 0x10A);
  EXPECT_EQ(Val(u"& H10"), 16);
}

TEST(Val, ReadsHexadecimalAndOctalNumbers) {
  const ValCase cases[] = {
      {u"&H10", 16},
      {u"&h1f", 31},
      {u"&O17", 15},
      {u"&o17", 15},
      {u"&H", 0},
      {u"&O", 0},
      {u"&", 0},
      {u"&10", 0},
      {u"&O18", 1},
      {u"&H1G", 1},
      {u"-&H10", 0},
      {u"+&H10", 0},
      {u"&H-1", 0},
      {u"&H7FFF", 32767},
      {u"&H8000", -32768},
      {u"&HFFFF", -1},
      {u"&HFFFF&", 65535},
      {u"&H8000&", 32768},
      {u"&H0000FFFF", -1},
      {u"&O177777", -1},
      {u"&O177777&", 65535},
      {u"&H10000", 65536},
      {u"&H7FFFFFFF", 2147483647},
      {u"&H80000000", -2147483648.0},
      {u"&HFFFFFFFF", -1},
      {u"&HFFFFFFFF&", -1},
      {u"&H100000000", 4294967296.0},
      {u"&H100000000&", 4294967296.0},
      {u"&O37777777777", -1},
      {u"&O40000000000", 4294967296.0},
  };
  for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.value) << testing::PrintToString(c.text);
}

TEST(Val, HasNoValueForANumberTooLargeForADouble) {
  EXPECT_EQ(Val(u"1e308"), 1e308);
  EXPECT_FALSE(Val(u"1e309"));
  EXPECT_FALSE(Val(u"-1e309"));
  EXPECT_FALSE(Val(u"1e99999999999999999999"));
  EXPECT_FALSE(Val(std::u16string(400, u'9')));
  EXPECT_TRUE(Val(u"0." + std::u16string(400, u'0') + u"1"));
  EXPECT_FALSE(Val(u"&H" + std::u16string(300, u'F')));
  EXPECT_FALSE(Val(u"&O" + std::u16string(400, u'7') + u"&"));
}

TEST(Val, HasAFiniteValueOrNoneForEveryBeginningOfANumber) {
  for (const auto& text : AllTexts(u"1&HhO.eD- ", 5)) {
    const auto value = Val(text);
    ASSERT_TRUE(!value || std::isfinite(*value)) << testing::PrintToString(text);
    ASSERT_EQ(ValText(text), value ? std::optional(NumberText(*value)) : std::nullopt);
  }
}

TEST(NumberText, IsPlainUpToFifteenDigits) {
  const struct {
    double value;
    std::u16string_view text;
  } cases[] = {
      {0, u"0"},
      {-0.0, u"0"},
      {1, u"1"},
      {-1, u"-1"},
      {100, u"100"},
      {0.5, u"0.5"},
      {-0.25, u"-0.25"},
      {1.1, u"1.1"},
      {0.1 + 0.2, u"0.3"},
      {1.0 / 3, u"0.333333333333333"},
      {2.0 / 3, u"0.666666666666667"},
      {123456789012345, u"123456789012345"},
      {999999999999999, u"999999999999999"},
      {1e15, u"1E+15"},
      {9999999999999999.0, u"1E+16"},
      {1234567890123456.0, u"1.23456789012346E+15"},
      {1e100, u"1E+100"},
      {-1.5e20, u"-1.5E+20"},
      {0.00001, u"0.00001"},
      {0.000000000000001, u"0.000000000000001"},
      {0.0000000000000012, u"1.2E-15"},
      {1e-16, u"1E-16"},
      {4294967296.0, u"4294967296"},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text) << c.value;
}

TEST(ValText, IsTheDecimalTextOfAnyBase) {
  EXPECT_EQ(ValText(u"&H10"), u"16");
  EXPECT_EQ(ValText(u"nothing"), u"0");
  EXPECT_EQ(ValText(u"1e309"), std::nullopt);
}

TEST(OwnNumberText, IsATextThatPrintsAsItWasWritten) {
  for (const std::u16string_view own : {u"0", u"100", u"1.5", u"-3", u"0.5", u"1E+15"}) {
    EXPECT_TRUE(IsOwnNumberText(own)) << testing::PrintToString(own);
  }
  for (const std::u16string_view other : {u"", u"10#", u"&H1", u"&H10", u".5", u"1.50", u"05",
                                          u"1e15", u"-0", u"+1", u"1 0", u"A", u"1&", u"1E+309"}) {
    EXPECT_FALSE(IsOwnNumberText(other)) << testing::PrintToString(other);
  }
}

TEST(OwnNumberText, AgreesWithPrintingTheValueOfEveryShortText) {
  for (const auto& text : AllTexts(u"10.-eE+& ", 5)) {
    ASSERT_EQ(IsOwnNumberText(text), ValText(text) == text) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace declarium
