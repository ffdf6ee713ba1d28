#include "library/grouped_list.h"

#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

GroupedList GroupedListOf(const std::vector<std::u16string>& texts) {
  GroupedList list;
  for (const auto& text : texts) list.push_back({text, 1});
  return list;
}

TEST(AlphabeticInsertion, IsBeforeTheFirstGreaterText) {
  const auto list = GroupedListOf({u"b", u"D", u"f"});
  EXPECT_EQ(GetAlphabeticInsertion(1, 3, u"A", list), 1);
  EXPECT_EQ(GetAlphabeticInsertion(1, 3, u"c", list), 2);
  EXPECT_EQ(GetAlphabeticInsertion(1, 3, u"E", list), 3);
  EXPECT_EQ(GetAlphabeticInsertion(1, 3, u"g", list), 4);
}

TEST(AlphabeticInsertion, IsNoneForATextAlreadyInTheRange) {
  const auto list = GroupedListOf({u"b", u"D", u"f"});
  EXPECT_EQ(GetAlphabeticInsertion(1, 3, u"d", list), -1);
  EXPECT_EQ(GetAlphabeticInsertion(3, 3, u"d", list), 3) << "outside the range it does not count";
}

TEST(AlphabeticInsertion, IsTheStartOfAnEmptyRange) {
  EXPECT_EQ(GetAlphabeticInsertion(1, 0, u"a", {}), 1);
  EXPECT_EQ(GetAlphabeticInsertion(4, 3, u"a", GroupedListOf({u"x", u"y", u"z"})), 4);
}

TEST(AlphabeticInsertion, InARangeOutOfOrderStopsAtTheFirstGreaterText) {
  EXPECT_EQ(GetAlphabeticInsertion(1, 2, u"a", GroupedListOf({u"b", u"a"})), 1);
}

TEST(FindItemByIcon, GivesTheFirstEntryWithTheIcon) {
  const GroupedList list = {{u"a", 1}, {u"b", 3}, {u"c", 3}};
  EXPECT_EQ(FindItemByIcon(1, list), 1);
  EXPECT_EQ(FindItemByIcon(3, list), 2);
  EXPECT_EQ(FindItemByIcon(2, list), -1);
  EXPECT_EQ(FindItemByIcon(1, {}), -1);
}

TEST(InsertEntry, TakesPositionsFromOneToOneBeyondTheEnd) {
  GroupedList list;
  InsertEntry(list, 1, {u"b", 1});
  InsertEntry(list, 1, {u"a", 1});
  InsertEntry(list, 3, {u"c", 1});
  EXPECT_EQ(list, GroupedListOf({u"a", u"b", u"c"}));
}

}  // namespace
}  // namespace declarium
