#include "text/scan.h"

#include <string>

#include "gtest/gtest.h"

#include "text/text.h"

namespace declarium {
namespace {

// Every length and place around the blocks that are looked at in one go.
constexpr std::size_t kLongest = 70;

TEST(Scan, FindsAUnitAtEveryPlaceOfEveryLength) {
  for (std::size_t size = 0; size <= kLongest; ++size) {
    std::u16string text(size, u'x');
    EXPECT_EQ(FindUnit(text, u'A'), text.npos);
    for (std::size_t place = 0; place < size; ++place) {
      text[place] = u'A';
      EXPECT_EQ(FindUnit(text, u'A'), place);
      EXPECT_EQ(FindUnit(text, u'A', place), place);
      EXPECT_EQ(FindUnit(text, u'A', place + 1), text.npos);
      text[place] = u'x';
    }
  }
}

TEST(Scan, TellsALowUnitAtEveryPlace) {
  for (std::size_t size = 0; size <= kLongest; ++size) {
    std::u16string text(size, u'\x3');
    EXPECT_FALSE(HasUnitUpTo(text, 2));
    for (std::size_t place = 0; place < size; ++place) {
      text[place] = u'\x2';
      EXPECT_TRUE(HasUnitUpTo(text, 2));
      text[place] = u'\x3';
    }
  }
}

TEST(Scan, LowersEveryUnitLikeTheTable) {
  std::u16string text;
  for (std::uint32_t unit = 0; unit < 0x10000; ++unit) text += static_cast<char16_t>(unit);
  const auto lowered = LowerCase(text);
  for (std::size_t i = 0; i < text.size(); ++i) EXPECT_EQ(lowered[i], LowerCase(text[i])) << i;
}

TEST(Scan, FindsATextInAnyCaseWhereItsLowerCaseFormStands) {
  const std::u16string soughts[] = {u"a", u"ab", u"abc\x161", u"\x161", u"k"};
  for (const auto& sought : soughts) {
    for (std::size_t size = sought.size(); size <= kLongest; ++size) {
      for (std::size_t place = 0; place + sought.size() <= size; ++place) {
        std::u16string text(size, u'X');
        for (std::size_t i = 0; i < sought.size(); ++i) {
          text[place + i] = sought[i] == u'\x161' ? u'\x160'
                            : sought[i] == u'k'   ? u'\x212A'
                                                  : static_cast<char16_t>(sought[i] - 32);
        }
        EXPECT_EQ(FindIgnoringCase(text, sought), place);
        text[place] = u'X';
        EXPECT_EQ(FindIgnoringCase(text, sought), LowerCase(text).find(sought));
      }
    }
  }
}

TEST(Scan, AnEmptyTextStandsEverywhereAndALongerOneNowhere) {
  EXPECT_EQ(FindIgnoringCase(u"", u""), 0);
  EXPECT_EQ(FindIgnoringCase(u"ab", u"abc"), std::u16string_view::npos);
}

}  // namespace
}  // namespace declarium
