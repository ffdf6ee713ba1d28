#include "source/format_text.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"
#include "vb/keyword.h"

namespace declarium {
namespace {

constexpr auto kNormal = TextColor::kNormal;
constexpr auto kKeyword = TextColor::kKeyword;
constexpr auto kComment = TextColor::kComment;

using Runs = std::vector<ColorRun>;

// Keywords in square brackets, comments in braces.
std::u16string Marked(std::u16string_view text) {
  std::u16string marked;
  for (const auto& [color, piece] : FormatText(text)) {
    const auto* const marks = color == kKeyword ? u"[]" : color == kComment ? u"{}" : u"";
    if (*marks != 0) marked += marks[0];
    marked += piece;
    if (*marks != 0) marked += marks[1];
  }
  return marked;
}

TEST(FormatText, ColorsKeywords) {
  EXPECT_EQ(FormatText(u"Const A As Long = 5"), (Runs{{kKeyword, u"Const"},
                                                      {kNormal, u" A "},
                                                      {kKeyword, u"As"},
                                                      {kNormal, u" "},
                                                      {kKeyword, u"Long"},
                                                      {kNormal, u" = 5"}}));
}

TEST(FormatText, AnEmptyTextHasNoRuns) {
  EXPECT_TRUE(FormatText(u"").empty());
}

struct MarkedCase {
  std::u16string_view text;
  std::u16string_view marked;
};

TEST(FormatText, AnswersForKnownLines) {
  const MarkedCase cases[] = {
      {u"PRIVATE x private", u"[PRIVATE] x [private]"},
      {u"Dim x Optional", u"Dim x Optional"},
      {u"Declare Sub S Lib \"k\" Alias \"a\" ()",
       u"[Declare] [Sub] S [Lib] \"k\" [Alias] \"a\" ()"},
      {u"(ByVal x As Long, y As Any)", u"([ByVal] x [As] [Long], y [As] [Any])"},
      {u"= \"My String Long\" Long", u"= \"My String Long\" [Long]"},
      {u"x As Long 'Long  Const", u"x [As] [Long] {'Long  Const}"},
      {u"\tAs As Long", u"\tAs [As] [Long]"},
      {u"\t\t\t'note Long", u"{\t\t\t'note Long}"},
      {u"'a\r\nLong", u"{'a\r\n}[Long]"},
      {u"  Long  x ", u"  [Long]  x "},
      {u"Long),", u"Long),"},
      {u"(Long),", u"(Long),"},
      {u"Long)", u"[Long])"},
      {u",Long", u",Long"},
      {u"Long()", u"Long()"},
      {u"\"a 'b Long\"", u"\"a {'b Long\"}"},
      {u"a\" Long", u"a\" Long"},
      {u"\" Long \" Long", u"\" [Long] \" [Long]"},
      {u"\"\" Long", u"\"\" [Long]"},
      {u"('x Long", u"({'x Long}"},
      {u"'x)", u"{'x)}"},
      {u"\"x Long\r\nLong", u"\"x Long\r\n[Long]"},
      {u"\r\n\r\nLong\r\n", u"\r\n\r\n[Long]\r\n"},
      {u"a\rLong\nLong", u"a\rLong\nLong"},
  };
  for (const auto& c : cases) EXPECT_EQ(Marked(c.text), c.marked);
}

TEST(FormatText, ALoneBracketComesOutTwiceAndALoneCommaOnce) {
  EXPECT_EQ(Marked(u"("), u"((");
  EXPECT_EQ(Marked(u")"), u"))");
  EXPECT_EQ(Marked(u","), u",");
  EXPECT_EQ(Marked(u"( Long )"), u"(( [Long] ))");
  EXPECT_EQ(Marked(u"()"), u"()");
}

// Every insertion of the display, one after another, the slow literal twin.
Runs PlainFormatText(std::u16string_view text) {
  Runs runs;
  auto color = kNormal;
  const auto insert = [&](std::u16string_view piece) {
    if (piece.empty()) return;
    if (!runs.empty() && runs.back().color == color) {
      runs.back().text += piece;
    } else {
      runs.push_back({color, std::u16string(piece)});
    }
  };
  const auto is_one_of = [](std::u16string_view letter, std::u16string_view units) {
    return !letter.empty() && units.contains(letter[0]);
  };
  const auto lines = Split(text, kCrLf);
  for (std::size_t l = 0; l < lines.size(); ++l) {
    int depth = 0;
    bool comment = false;
    color = kNormal;
    const auto words = Split(lines[l], u' ');
    for (std::size_t i = 0; i < words.size(); ++i) {
      const std::u16string word(words[i]);
      auto w = word;
      const auto left = [](const std::u16string& s) { return s.substr(0, 1); };
      const auto right = [](const std::u16string& s) {
        return s.empty() ? s : s.substr(s.size() - 1);
      };
      if (is_one_of(left(w), u")(")) w = w.substr(1);
      if (is_one_of(right(w), u",)(")) w.pop_back();
      if (is_one_of(left(word), u"()")) insert(left(word));
      if (left(w) == u"\"") depth = depth + 1;
      if (right(w) == u"\"") depth = depth - 1;
      if (left(Replace(w, u"\t", u"")) == u"'") {
        color = kComment;
        comment = true;
      }
      if (depth == 0 && !comment && IsKeyword(w)) color = kKeyword;
      insert(w);
      if (depth == 0 && !comment) color = kNormal;
      if (is_one_of(right(word), u"),(")) insert(right(word));
      if (i + 1 < words.size()) insert(u" ");
    }
    if (l + 1 < lines.size()) insert(kCrLf);
  }
  return runs;
}

TEST(FormatText, AgreesWithItsSlowTwinOnRandomText) {
  Random random(9);
  const std::vector<std::u16string> pieces = {u"Long", u"x", u" ",  u" ",    u"(",  u")",    u",",
                                              u"\"",   u"'", u"\t", u"\r\n", u"As", u"\"a\""};
  for (int round = 0; round < 20'000; ++round) {
    const auto text = random.Text(pieces, 16);
    ASSERT_EQ(FormatText(text), PlainFormatText(text)) << testing::PrintToString(text);
  }
}

TEST(FormatText, AgreesWithItsSlowTwinOnEverySmallText) {
  for (const auto& text : AllTexts(u"a (\"',", 6)) {
    ASSERT_EQ(FormatText(text), PlainFormatText(text)) << testing::PrintToString(text);
  }
}

TEST(FormatText, ShowsTheWholeTextWithLoneBracketsDoubled) {
  Random random(10);
  const std::vector<std::u16string> pieces = {u"Long", u" ",  u"(", u")",
                                              u",",    u"\"", u"'", u"\r\n"};
  for (int round = 0; round < 5'000; ++round) {
    const auto text = random.Text(pieces, 16);
    std::u16string shown;
    for (const auto& run : FormatText(text)) shown += run.text;
    std::u16string expected;
    for (std::size_t start = 0; start <= text.size();) {
      // Words end at a blank, at CR LF and at the end of the text.
      auto end = std::min({text.find(u' ', start), text.find(kCrLf, start), text.size()});
      const auto word = text.substr(start, end - start);
      expected += word;
      if (word == u"(" || word == u")") expected += word;
      const auto separator = end == text.size() ? 0U : text[end] == u' ' ? 1U : 2U;
      expected += text.substr(end, separator);
      if (separator == 0) break;
      start = end + separator;
    }
    ASSERT_EQ(shown, expected) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace declarium
