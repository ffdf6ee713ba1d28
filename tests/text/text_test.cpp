#include "text/text.h"

#include <gtest/gtest.h>

#include "support/texts.h"

namespace declarium {
namespace {

using Pieces = std::vector<std::u16string_view>;

TEST(LowerCase, MapsOneUnitToOneUnit) {
  EXPECT_EQ(LowerCase(u"GetTickCount ŠŤĽŽÝÁÍÉ 123"), u"gettickcount šťľžýáíé 123");
  EXPECT_EQ(LowerCase(u""), u"");
  EXPECT_EQ(LowerCase(u'\u0178'), u'\u00FF') << "the lower-case form may stand far away";
}

TEST(LowerCase, LeavesACharacterWithALongerLowerCaseFormAsItIs) {
  EXPECT_EQ(LowerCase(u'\u0130'), u'\u0130') << "capital I with a dot";
}

TEST(LowerCase, LeavesSurrogatesAsTheyAre) {
  EXPECT_EQ(LowerCase(u"\U00010400"), u"\U00010400") << "a capital letter outside the first plane";
  EXPECT_EQ(LowerCase(u'\xDC00'), u'\xDC00');
}

TEST(LowerCase, OfALowerCaseTextChangesNothing) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    const auto lowered = LowerCase(static_cast<char16_t>(unit));
    ASSERT_EQ(LowerCase(lowered), lowered) << unit;
  }
}

TEST(LowerCaseInto, ReplacesWhatTheTextHeld) {
  std::u16string out = u"something longer";
  LowerCaseInto(u"ABC", out);
  EXPECT_EQ(out, u"abc");
}

TEST(CountText, IsTheCountInDigits) {
  EXPECT_EQ(CountText(0), u"0");
  EXPECT_EQ(CountText(18446744073709551615u), u"18446744073709551615");
}

TEST(Comparing, IgnoringCaseIsComparingTheLowerCaseForms) {
  const auto texts = AllTexts(u"aAb_Č\u010D", 3);
  for (const auto& a : texts) {
    for (const auto& b : texts) {
      const auto lowered = LowerCase(a) <=> LowerCase(b);
      ASSERT_EQ(CompareIgnoringCase(a, b), lowered);
      ASSERT_EQ(EqualIgnoringCase(a, b), lowered == 0);
      ASSERT_EQ(CompareOrdinal(a, b), a <=> b);
    }
  }
}

TEST(Comparing, PutsAnUnderscoreBeforeEveryLetter) {
  EXPECT_TRUE(CompareIgnoringCase(u"A_", u"AB") < 0) << "as in the lower-case form";
  EXPECT_TRUE(CompareOrdinal(u"A_", u"AB") > 0);
}

TEST(Trimming, RemovesBlanksOnly) {
  EXPECT_EQ(TrimLeft(u"  a b "), u"a b ");
  EXPECT_EQ(TrimRight(u"  a b "), u"  a b");
  EXPECT_EQ(Trim(u"  a b  "), u"a b");
  EXPECT_EQ(Trim(u" \ta\r\n "), u"\ta\r\n");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(TrimLeft(u"   "), u"");
  EXPECT_EQ(TrimRight(u""), u"");
}

TEST(Splitting, NeighbouringSeparatorsGiveEmptyPieces) {
  EXPECT_EQ(Split(u"a  b", u' '), (Pieces{u"a", u"", u"b"}));
  EXPECT_EQ(Split(u" a ", u' '), (Pieces{u"", u"a", u""}));
  EXPECT_EQ(Split(u" ", u' '), (Pieces{u"", u""}));
  EXPECT_EQ(Split(u"a", u' '), (Pieces{u"a"}));
}

TEST(Splitting, AnEmptyTextGivesNoPieces) {
  EXPECT_TRUE(Split(u"", u' ').empty());
  EXPECT_TRUE(Split(u"", kCrLf).empty());
}

TEST(Splitting, TakesASeparatorOfSeveralUnitsWhole) {
  EXPECT_EQ(Split(u"a\r\n\rb\r\n", kCrLf), (Pieces{u"a", u"\rb", u""}));
}

TEST(Replacing, IsOnePassFromLeftToRight) {
  EXPECT_EQ(Replace(u"aaaaa", u"aa", u"a"), u"aaa");
  EXPECT_EQ(Replace(u"abcabc", u"bc", u""), u"aa");
  EXPECT_EQ(Replace(u"abc", u"x", u"y"), u"abc");
  EXPECT_EQ(Replace(u"", u"x", u"y"), u"");
  EXPECT_EQ(Replace(u"x", u"x", u"xx"), u"xx") << "the replacement is not looked at again";
}

TEST(RemovingUnits, TakesEveryOneOfThem) {
  EXPECT_EQ(RemoveUnits(u"(a), (b)", u"(),"), u"a b");
  EXPECT_EQ(RemoveUnits(u"abc", u""), u"abc");
}

TEST(FoldingBlanks, EqualsReplacingDoubleBlanksUntilNoneIsLeft) {
  for (const auto& text : AllTexts(u"a \t", 7)) {
    auto plain = text;
    while (plain.contains(u"  ")) plain = Replace(plain, u"  ", u" ");
    ASSERT_EQ(FoldBlanks(text), plain);
  }
}

TEST(Digits, AreTheTenAsciiDigits) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    ASSERT_EQ(IsDigit(static_cast<char16_t>(unit)), unit >= 48 && unit <= 57) << unit;
  }
}

TEST(Utf8, GoesBothWays) {
  const std::u16string text = u"a\u010D\u20AC\U0001F600";
  const std::string bytes = "a\xC4\x8D\xE2\x82\xAC\xF0\x9F\x98\x80";
  EXPECT_EQ(FromUtf8(bytes), text);
  EXPECT_EQ(ToUtf8(text), bytes);
}

TEST(Utf8, EveryCharacterOfTheFirstPlaneComesBack) {
  for (char32_t code = 0; code < 0x10000; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    const std::u16string text(1, static_cast<char16_t>(code));
    ASSERT_EQ(FromUtf8(ToUtf8(text)), text) << static_cast<unsigned>(code);
  }
}

TEST(Utf8, IllFormedBytesBecomeReplacementCharactersOneByOne) {
  const struct {
    std::string_view bytes;
    std::u16string_view text;
  } cases[] = {
      {"\x80", u"\uFFFD"},                                // a continuation byte alone
      {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // longer than it needs to be
      {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},            // likewise
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last code point
      {"\xF5\x80", u"\uFFFD\uFFFD"},                      // no lead byte
      {"\xE2\x82", u"\uFFFD\uFFFD"},                      // cut short
      {"\xC4z", u"\uFFFDz"},                              // the next byte is read again
  };
  for (const auto& c : cases) EXPECT_EQ(FromUtf8(c.bytes), c.text) << c.bytes;
}

TEST(Utf8, ALoneSurrogateBecomesAReplacementCharacter) {
  EXPECT_EQ(ToUtf8(u"\xD83D"), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(u"\xDE00z"), "\xEF\xBF\xBDz");
  EXPECT_EQ(ToUtf8(u"\xD83Dz"), "\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace declarium
