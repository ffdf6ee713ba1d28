#include "cli/line_comparison.h"

#include <gtest/gtest.h>
#include <random>

#include "cli/line_difference.h"

namespace declarium::cli {
namespace {

std::u16string After(std::u16string_view before, const std::vector<Replacement>& replacements) {
  std::u16string text;
  std::size_t done = 0;
  for (const auto& [begin, end, now] : replacements) {
    EXPECT_GE(begin, done);
    text += before.substr(done, begin - done);
    text += now;
    done = end;
  }
  return text += before.substr(done);
}

TEST(LineComparison, EqualTextsDoNotDiffer) {
  EXPECT_TRUE(ReplacementsBetween(u"", u"").empty());
  EXPECT_TRUE(ReplacementsBetween(u"a\r\nb", u"a\r\nb").empty());
}

TEST(LineComparison, OnlyTheLinesThatDifferAreReplaced) {
  const auto replacements = ReplacementsBetween(u"a\nb\nc\nd\ne\n", u"a\nB\nc\ne\nf\n");
  ASSERT_EQ(replacements.size(), 3U);
  EXPECT_EQ(UnifiedDifference("x", u"a\nb\nc\nd\ne\n", replacements),
            "--- x\n+++ x\n@@ -1,5 +1,5 @@\n a\n-b\n+B\n c\n-d\n e\n+f\n");
}

TEST(LineComparison, AFileThatIsNotThereComesWhole) {
  EXPECT_EQ(UnifiedDifference("x", u"", ReplacementsBetween(u"", u"a\n")),
            "--- x\n+++ x\n@@ -0,0 +1,1 @@\n+a\n");
}

TEST(LineComparison, TheReplacementsMakeTheOtherText) {
  std::mt19937 random(3);
  const auto text_of = [&] {
    std::u16string text;
    for (auto lines = random() % 12; lines > 0; --lines) {
      text += static_cast<char16_t>(u'a' + random() % 3);
      text += u'\n';
    }
    return random() % 3 == 0 ? text + u"end" : text;
  };
  for (int round = 0; round < 3000; ++round) {
    const auto before = text_of();
    const auto now = text_of();
    ASSERT_EQ(After(before, ReplacementsBetween(before, now)), now);
  }
}

TEST(LineComparison, TextsWithLittleInCommonAreOneReplacement) {
  std::u16string before = u"same\n";
  std::u16string now = u"same\n";
  for (int i = 0; i < 2000; ++i) {
    before += u"b" + std::u16string(static_cast<std::size_t>(i % 50), u'x') + u"\n";
    now += u"n" + std::u16string(static_cast<std::size_t>(i % 50), u'x') + u"\n";
  }
  const auto replacements = ReplacementsBetween(before, now);
  ASSERT_EQ(replacements.size(), 1U);
  EXPECT_EQ(replacements[0].begin, 5U);
  EXPECT_EQ(After(before, replacements), now);
}

}  // namespace
}  // namespace declarium::cli
