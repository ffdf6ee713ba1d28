#include "audit/line_edits.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium::audit {
namespace {

using Removed = std::vector<RemovedLines>;

std::string After(std::u16string_view text, const Removed& removed, const Removed& declared) {
  const ModuleLines lines(text);
  return ToUtf8(Edited(text, TextEdits(lines, EditsToRemove(0, lines, removed, declared))));
}

TEST(ModuleLines, AreCutAtEveryLineEnd) {
  const ModuleLines lines(u"a\r\nb\rc\n\nd");
  EXPECT_EQ(lines.Count(), 5U);
  EXPECT_EQ(lines.At(1), u"a");
  EXPECT_EQ(lines.EndOf(1), u"\r\n");
  EXPECT_EQ(lines.At(2), u"b");
  EXPECT_TRUE(lines.IsBlank(4));
  EXPECT_EQ(lines.At(5), u"d");
  EXPECT_EQ(lines.EndOf(5), u"");
  EXPECT_EQ(lines.Start(6), 9U);
  EXPECT_EQ(ModuleLines(u"a\n").Count(), 1U);
  EXPECT_EQ(ModuleLines(u"").Count(), 0U);
}

TEST(ModuleLines, KnowComments) {
  const ModuleLines lines(u"' a\n\tRem b\nrem\nRemark = 1\na ' b");
  EXPECT_TRUE(lines.IsComment(1));
  EXPECT_TRUE(lines.IsComment(2));
  EXPECT_TRUE(lines.IsComment(3));
  EXPECT_FALSE(lines.IsComment(4));
  EXPECT_FALSE(lines.IsComment(5));
}

TEST(EditsToRemove, NeighborsAreOneEdit) {
  const ModuleLines lines(u"a\nb\nc\nd\n");
  const Removed removed = {{2, 2}, {3, 3}};
  EXPECT_EQ(EditsToRemove(4, lines, removed, removed),
            (std::vector<LineEdit>{{4, 2, 2, std::nullopt}}));
}

TEST(EditsToRemove, OneOfTwoEmptyLinesThatMeetGoes) {
  EXPECT_EQ(After(u"a\n\nb\n\nc\n", {{3, 3}}, {{1, 1}, {3, 3}, {5, 5}}), "a\n\nc\n");
  EXPECT_EQ(After(u"a\nb\n\nc\n", {{2, 2}}, {{1, 1}, {2, 2}, {4, 4}}), "a\n\nc\n");
}

TEST(EditsToRemove, ALastLineWithoutAnEndGoesToo) {
  EXPECT_EQ(After(u"a\r\nb", {{2, 2}}, {{1, 1}, {2, 2}}), "a\r\n");
}

TEST(EditsToRemove, CommentsGoOnlyWithAllThatFollowsThem) {
  const Removed all = {{1, 1}, {3, 3}, {4, 4}};
  EXPECT_EQ(After(u"a\n' x\nb\nc\n", {{3, 3}}, all), "a\n' x\nc\n");
  EXPECT_EQ(After(u"a\n' x\nb\nc\n", {{3, 3}, {4, 4}}, all), "a\n");
  EXPECT_EQ(After(u"a\n' x\nb\nc\n", {{4, 4}}, all), "a\n' x\nb\n");
}

TEST(EditsToRemove, CommentsBehindOtherCodeOrOnTopStay) {
  EXPECT_EQ(After(u"' top\nb\n", {{2, 2}}, {{2, 2}}), "' top\n");
  EXPECT_EQ(After(u"a\nOption Explicit\n' x\nb\n", {{4, 4}}, {{1, 1}, {4, 4}}),
            "a\nOption Explicit\n' x\n");
}

TEST(TextEdits, AReplacedLineKeepsItsEnd) {
  const std::u16string text = u"a\rb\r\nc";
  const ModuleLines lines(text);
  EXPECT_EQ(Edited(text, TextEdits(lines, {{0, 1, 1, u"A"}, {0, 2, 1, u"B"}, {0, 3, 1, u"C"}})),
            u"A\rB\r\nC");
}

}  // namespace
}  // namespace declarium::audit
