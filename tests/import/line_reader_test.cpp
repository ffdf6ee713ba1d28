#include "import/line_reader.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

// Replaces the first occurrence.
std::u16string ReplaceOnce(std::u16string text, std::u16string_view from, std::u16string_view to) {
  const auto found = text.find(from);
  return found == text.npos ? text : text.replace(found, from.size(), to);
}

// The normalization written out with 1-based positions, 0 for none.
std::u16string PlainNormalizeLine(std::u16string_view line) {
  const auto position_of = [](std::u16string_view text, std::u16string_view sought) {
    return text.find(sought) + 1;
  };
  std::u16string s(TrimLeft(Replace(line, u"\t", u" ")));
  const auto p = position_of(s, u"'");
  if (p > 0) {
    while (p + 1 <= s.size() && s[p] == u' ') s = ReplaceOnce(s, u"' ", u"'");
  }
  while (position_of(s, u"  ") > 0 && position_of(s, u"  ") < p) s = Replace(s, u"  ", u" ");
  return s;
}

// The n rounds written out with 1-based positions, 0 for none.
std::u16string PlainRestAfterBlank(std::u16string_view line, int n) {
  std::size_t pos = 0;
  for (int round = 0; round < n; ++round) {
    std::size_t found = 0;
    for (auto i = pos + 1; i <= line.size() && found == 0; ++i) {
      if (line[i - 1] == u' ') found = i;
    }
    pos = found;
  }
  return pos == 0 ? u"" : std::u16string(line.substr(pos));
}

TEST(NormalizeLine, AnswersForKnownLines) {
  const struct {
    std::u16string_view line;
    std::u16string_view normalized;
  } cases[] = {
      {u"\tConst  A = 1", u"Const  A = 1"},
      {u"Const  A = 1 '   note", u"Const A = 1 'note"},
      {u"Const  A = 1 ' a  b", u"Const A = 1 'a b"},
      {u"Const A = 1 ' a  b", u"Const A = 1 'a  b"},
      {u"Const A = \"it'  is  \"", u"Const A = \"it'is  \""},
      {u"Const  A = \"it'  is  \"", u"Const A = \"it'is \""},
      {u"Const\tA\t\t=\t1", u"Const A  = 1"},
      {u"' a ' b", u"'a ' b"},
      {u"'    ", u"'"},
      {u"x  ", u"x  "},
      {u" \t ", u""},
      {u"", u""},
  };
  for (const auto& c : cases) EXPECT_EQ(NormalizeLine(c.line), c.normalized);
}

TEST(NormalizeLine, AgreesWithItsSlowTwinOnEverySmallLine) {
  for (const auto& line : AllTexts(u"a '\t", 8)) {
    ASSERT_EQ(NormalizeLine(line), PlainNormalizeLine(line)) << testing::PrintToString(line);
  }
}

TEST(NormalizeLine, AgreesWithItsSlowTwinOnRandomLines) {
  Random random(2);
  const std::vector<std::u16string> pieces = {u"a", u" ", u"  ", u"    ", u"'", u"\t", u"\""};
  for (int round = 0; round < 20'000; ++round) {
    const auto line = random.Text(pieces, 20);
    ASSERT_EQ(NormalizeLine(line), PlainNormalizeLine(line)) << testing::PrintToString(line);
  }
}

TEST(RestAfterBlank, GivesWhatStandsBehindTheNthBlank) {
  EXPECT_EQ(RestAfterBlank(u"Const A = 1", 2), u"= 1");
  EXPECT_EQ(RestAfterBlank(u"Const A = 1", 3), u"1");
  EXPECT_EQ(RestAfterBlank(u"Const A ", 2), u"");
}

TEST(RestAfterBlank, StartsAgainAtTheBeginningAfterTheLastBlank) {
  EXPECT_EQ(RestAfterBlank(u"Type POINT", 2), u"");
  EXPECT_EQ(RestAfterBlank(u"Type POINT", 3), u"POINT");
  EXPECT_EQ(RestAfterBlank(u"Const A = 1", 4), u"");
  EXPECT_EQ(RestAfterBlank(u"Const A = 1", 5), u"A = 1");
}

TEST(RestAfterBlank, IsEmptyWithoutAnyBlank) {
  for (int n = 0; n < 6; ++n) EXPECT_EQ(RestAfterBlank(u"Type", n), u"");
  EXPECT_EQ(RestAfterBlank(u"", 1), u"");
  EXPECT_EQ(RestAfterBlank(u"a b", 0), u"");
}

TEST(RestAfterBlank, AgreesWithItsSlowTwinOnEverySmallLine) {
  for (const auto& line : AllTexts(u"ab ", 7)) {
    for (int n = 0; n < 9; ++n) ASSERT_EQ(RestAfterBlank(line, n), PlainRestAfterBlank(line, n));
  }
}

std::u16string Joined(std::u16string text) {
  SourceText source{std::move(text), {}};
  JoinContinuedLines(source);
  return source.text;
}

TEST(JoinContinuedLines, TheBlankBeforeTheUnderscoreStays) {
  EXPECT_EQ(Joined(u"Declare Sub _\r\nBeep"), u"Declare Sub Beep");
  EXPECT_EQ(Joined(u"a_\r\nb"), u"ab") << "words without a blank are joined directly";
  EXPECT_EQ(Joined(u"a _ \r\nb"), u"a _ \r\nb") << "a blank behind it ends the continuation";
  EXPECT_EQ(Joined(u"a_\nb"), u"a_\nb");
}

TEST(JoinContinuedLines, IsOneReplacementFromLeftToRight) {
  const auto texts = AllTexts(u"a_\r\n", 8);
  for (const auto& text : texts) ASSERT_EQ(Joined(text), Replace(text, u"_\r\n", u""));
}

TEST(JoinContinuedLines, JoiningAgainTakesWhatTheFirstTimeBroughtTogether) {
  SourceText source{u"a__\r\n\r\nb", {}};
  JoinContinuedLines(source);
  EXPECT_EQ(source.text, u"a_\r\nb");
  JoinContinuedLines(source);
  EXPECT_EQ(source.text, u"ab");
  EXPECT_EQ(source.JoinsUpTo(1), 2U);
  EXPECT_EQ(source.JoinsUpTo(0), 0U);
}

// The text with its joins undone; every unit of it must be found again at its place.
TEST(JoinContinuedLines, RemembersWhereLineEndsWereRemoved) {
  Random random(3);
  const std::vector<std::u16string> pieces = {u"x", u"_", u"_\r\n", u"\r\n", u"_\r\n_\r\n"};
  for (int round = 0; round < 5'000; ++round) {
    const auto text = random.Text(pieces, 12);
    SourceText source{text, {}};
    JoinContinuedLines(source);
    JoinContinuedLines(source);
    ASSERT_TRUE(std::ranges::is_sorted(source.joins));
    const auto line_ends = [](std::u16string_view t) {
      return Split(std::u16string(t) + u"x", kCrLf).size() - 1;
    };
    ASSERT_EQ(line_ends(source.text) + source.joins.size(), line_ends(text));
    ASSERT_EQ(source.JoinsUpTo(source.text.size()), source.joins.size());
  }
}

TEST(ReadSource, GivesATextWithoutCrLfItsLineEnds) {
  EXPECT_EQ(ReadSource(std::u16string(u"a\nb\n")).text, u"a\r\nb\r\n");
  EXPECT_EQ(ReadSource(std::u16string(u"a\rb")).text, u"a\r\nb");
  EXPECT_EQ(ReadSource(std::u16string(u"a")).text, u"a");
  EXPECT_EQ(ReadSource(std::u16string()).text, u"");
}

TEST(ReadSource, LeavesATextWithAnyCrLfAsItIs) {
  EXPECT_EQ(ReadSource(std::u16string(u"a\nb\r\nc\rd")).text, u"a\nb\r\nc\rd");
}

TEST(ReadSource, DecodesTheBytesOfAFile) {
  EXPECT_EQ(ReadSource(std::string_view("\x9Altov\xE1\n")).text, u"šltová\r\n");
}

std::vector<std::u16string_view> Sorted(const std::vector<std::u16string_view>& texts) {
  std::vector<std::u16string_view> sorted;
  for (const auto position : SortedPositions(texts)) sorted.push_back(texts[position]);
  return sorted;
}

using Views = std::vector<std::u16string_view>;

TEST(SortedPositions, IsAscendingByCharacterCode) {
  EXPECT_EQ(Sorted({u"b", u"a", u"b", u"c"}), (Views{u"a", u"b", u"b", u"c"}));
  EXPECT_EQ(Sorted({u"a", u"B"}), (Views{u"B", u"a"}));
  EXPECT_EQ(Sorted({u"\u010D", u"z"}), (Views{u"z", u"\u010D"}));
  EXPECT_EQ(Sorted({}), Views{});
}

TEST(SortedPositions, EqualElementsKeepTheirOrder) {
  const std::u16string text = u"same same other";
  const auto first = std::u16string_view(text).substr(0, 4);
  const auto second = std::u16string_view(text).substr(5, 4);
  const auto other = std::u16string_view(text).substr(10);
  const auto sorted = Sorted({first, other, second});
  EXPECT_EQ(sorted[1].data(), first.data());
  EXPECT_EQ(sorted[2].data(), second.data());
}

// The insertion sort with its jump search, written out.
Views PlainSort(const Views& texts) {
  Views scratch;
  for (const auto text : texts) {
    const auto i = scratch.size();
    auto step = static_cast<std::size_t>(std::sqrt(static_cast<double>(i)));
    if (step == 0) step = 1;
    std::size_t current = 0;
    while (current < i && scratch[current] <= text) current += step;
    auto k = current < step ? 0 : current - step;
    while (k < i && scratch[k] <= text) ++k;
    scratch.insert(scratch.begin() + static_cast<std::ptrdiff_t>(k), text);
  }
  return scratch;
}

TEST(SortedPositions, AgreesWithInsertionOnRandomTexts) {
  Random random(4);
  const std::vector<std::u16string> pieces = {
      u"a", u"b", u"B", u"_", std::u16string(1, u'\0'), u"\x1B", u"somelongbeginning", u"\uFFFF"};
  for (int round = 0; round < 400; ++round) {
    std::vector<std::u16string> texts(random.Below(80));
    for (auto& text : texts) text = u"x" + random.Text(pieces, 6);
    const Views views(texts.begin(), texts.end());
    ASSERT_EQ(Sorted(views), PlainSort(views));
  }
}

}  // namespace
}  // namespace declarium
