#include "cli/nearest_names.h"

#include <gtest/gtest.h>

namespace declarium::cli {
namespace {

struct DistanceCase {
  std::u16string_view a;
  std::u16string_view b;
  std::size_t distance;
};

TEST(EditDistance, CountsInsertionsRemovalsReplacementsAndSwaps) {
  const DistanceCase cases[] = {
      {u"", u"", 0},       {u"", u"abc", 3},   {u"abc", u"abc", 0},
      {u"abc", u"abd", 1}, {u"abc", u"ab", 1}, {u"abc", u"xabc", 1},
      {u"abc", u"acb", 1}, {u"ca", u"abc", 3}, {u"kitten", u"sitting", 3},
  };
  for (const auto& [a, b, distance] : cases) {
    EXPECT_EQ(EditDistance(a, b, 10), distance);
    EXPECT_EQ(EditDistance(b, a, 10), distance);
  }
}

TEST(EditDistance, StopsAboveItsLimit) {
  EXPECT_EQ(EditDistance(u"kitten", u"sitting", 2), 3u);
  EXPECT_EQ(EditDistance(u"a", u"aaaaaaaa", 2), 3u);
  EXPECT_EQ(EditDistance(u"abcdefgh", u"stuvwxyz", 3), 4u);
}

class Nearest : public testing::Test {
 protected:
  Nearest() {
    library_.SetItems(
        Kind::kDeclare,
        {{u"GetDC", u"GetText", u"GetWindow", u"SetText", u"SetTexts"}, {u"", u"", u"", u"", u""}});
    library_.SetItems(Kind::kType, {{u"Rect"}, {u""}});
  }
  [[nodiscard]] std::vector<std::u16string> Names(std::u16string_view name) const {
    std::vector<std::u16string> names;
    for (const auto& item : NearestNames(library_, kKinds, name)) names.emplace_back(item.name);
    return names;
  }
  Library library_;
};

TEST_F(Nearest, NearestFirstWhateverTheCase) {
  EXPECT_EQ(Names(u"settext"), (std::vector<std::u16string>{u"SetText", u"GetText", u"SetTexts"}));
  EXPECT_EQ(Names(u"RECTS"), (std::vector<std::u16string>{u"Rect"}));
}

TEST_F(Nearest, NothingThatIsFarAway) {
  EXPECT_TRUE(Names(u"Completely").empty());
  EXPECT_TRUE(Names(u"").empty());
  EXPECT_TRUE(Names(std::u16string(100'000, u'x')).empty());
}

}  // namespace
}  // namespace declarium::cli
