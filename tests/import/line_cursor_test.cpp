#include "import/line_cursor.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "import/parser.h"
#include "support/texts.h"
#include "text/code_page.h"

namespace declarium {
namespace {

struct Lines {
  std::vector<std::string> texts;
  std::vector<std::size_t> numbers;
  bool is_uncertain = false;
};

Lines LinesOf(std::string_view bytes) {
  Lines lines;
  FileCursor cursor(bytes, 0);
  while (cursor.Next()) {
    lines.texts.emplace_back(cursor.Line());
    lines.numbers.push_back(cursor.FileLine());
  }
  lines.is_uncertain = cursor.IsUncertain();
  return lines;
}

using LineTexts = std::vector<std::string>;
using Numbers = std::vector<std::size_t>;

TEST(FileCursor, ATextAlwaysEndsInALine) {
  EXPECT_EQ(LinesOf("").texts, LineTexts{""});
  EXPECT_EQ(LinesOf("a\r\n\r\nb\r\n").texts, (LineTexts{"a", "", "b", ""}));
  EXPECT_EQ(LinesOf("a\rb\nc").texts, LineTexts{"a\rb\nc"});
}

TEST(FileCursor, JoinsContinuedLinesAndKeepsTheBlank) {
  const auto lines = LinesOf("a _\r\n  b _\r\nc\r\nd _");
  EXPECT_EQ(lines.texts, (LineTexts{"a   b c", "d _"}));
  EXPECT_EQ(lines.numbers, (Numbers{1, 4}));
  EXPECT_FALSE(lines.is_uncertain);
}

TEST(FileCursor, OwnsUpWhenPiecesMayFormMoreThanALine) {
  for (const auto* bytes : {"_\r\nx", "a__\r\n\r\nb", "a\r_\r\n\nb", "a_\r\n_\r\n\r\nb"}) {
    EXPECT_TRUE(LinesOf(bytes).is_uncertain) << bytes;
  }
}

TEST(ParseSourceFile, AgreesWithJoiningTheWholeTextOnRandomSources) {
  constexpr auto kPieces = std::to_array<std::u16string_view>(
      {u"_", u"_\r\n", u" _\r\n", u"\r\n", u"\r\n", u"\r", u"\n", u" ", u"\t", u"Const A = 1",
       u"Type B", u"End Type", u"'  x  y", u"Const ", u"Declare Sub C Lib", u"Public ", u"\x01"});
  Random random(11);
  for (int round = 0; round < 20'000; ++round) {
    const auto bytes = EncodeCodePage(random.Text(kPieces, 14));
    auto text = ReadSource(bytes);
    JoinContinuedLines(text);
    const auto expected = ParseDeclarations(text);
    const auto parsed = ParseSourceFile(bytes);
    for (const auto kind : kKinds) {
      ASSERT_EQ(parsed[kind].names, expected[kind].names) << bytes;
      ASSERT_EQ(parsed[kind].items, expected[kind].items) << bytes;
    }
    ASSERT_TRUE(std::ranges::equal(parsed.skipped, expected.skipped, {}, &SkippedLine::number,
                                   &SkippedLine::number))
        << bytes;
    ASSERT_TRUE(std::ranges::equal(parsed.skipped, expected.skipped, {}, &SkippedLine::text,
                                   &SkippedLine::text))
        << bytes;
  }
}

}  // namespace
}  // namespace declarium
