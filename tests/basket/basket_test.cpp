#include "basket/basket.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

using Rows = std::vector<std::pair<std::u16string, int>>;

Rows RowsOf(const Basket& basket) {
  Rows rows;
  for (const auto& entry : basket.Entries()) rows.emplace_back(entry.text, entry.icon);
  return rows;
}

// Where an item belongs, found entry by entry; -1 when its group holds the name.
std::int32_t PlainPlace(const GroupedList& entries, Kind kind, std::u16string_view name) {
  const auto count = static_cast<std::int32_t>(entries.size());
  const auto first_of = [&](Kind sought, std::int32_t otherwise) {
    const auto position = FindItemByIcon(IconOf(sought), entries);
    return position == -1 ? otherwise : position;
  };
  const auto first_type = first_of(Kind::kType, count + 1);
  const auto first_declare = first_of(Kind::kDeclare, first_type);
  switch (kind) {
    case Kind::kConst:
      return GetAlphabeticInsertion(1, first_declare - 1, name, entries);
    case Kind::kDeclare:
      return GetAlphabeticInsertion(first_declare, first_type - 1, name, entries);
    case Kind::kType:
      break;
  }
  return GetAlphabeticInsertion(first_type, count, name, entries);
}

TEST(Basket, StartsEmpty) {
  const Basket basket;
  EXPECT_TRUE(basket.Empty());
  EXPECT_EQ(basket.Text(u"Private"), u"\r\n");
}

TEST(Basket, GroupsByKindWhateverComesFirst) {
  Basket basket;
  EXPECT_EQ(basket.Add(Kind::kType, u"T", u"\x0C"), 1);
  EXPECT_EQ(basket.Add(Kind::kConst, u"C", u"\x0E"), 1);
  EXPECT_EQ(basket.Add(Kind::kDeclare, u"D", u"\n"), 2);
  EXPECT_EQ(RowsOf(basket), (Rows{{u"C", 1}, {u"D", 2}, {u"T", 3}}));
}

TEST(Basket, OrdersAGroupWithoutRegardToCase) {
  Basket basket;
  basket.Add(Kind::kConst, u"b", u"");
  basket.Add(Kind::kConst, u"A", u"");
  EXPECT_EQ(RowsOf(basket), (Rows{{u"A", 1}, {u"b", 1}}));
}

TEST(Basket, TakesANameOnceInAGroupAndOnceInEach) {
  Basket basket;
  basket.Add(Kind::kType, u"Rect", u"\x0C");
  EXPECT_FALSE(basket.Add(Kind::kType, u"RECT", u"\x0C"));
  EXPECT_EQ(basket.Record().size(), 1U) << "a refused item is not recorded";
  EXPECT_EQ(basket.Add(Kind::kConst, u"RECT", u"\x0E"), 1);
  EXPECT_EQ(RowsOf(basket), (Rows{{u"RECT", 1}, {u"Rect", 3}}));
}

TEST(Basket, RecordsKindNameAndItemString) {
  Basket basket;
  basket.Add(Kind::kDeclare, u"Beep", u"\n\"kernel32\"");
  EXPECT_EQ(basket.Record().at(0), std::u16string(u"1\0Beep\0\n\"kernel32\"", 18));
}

TEST(Basket, RemovingSelectsTheEntryThatMovedUpOrTheNewLast) {
  Basket basket;
  for (const std::u16string_view name : {u"a", u"b", u"c"}) basket.Add(Kind::kConst, name, u"");
  EXPECT_EQ(basket.Remove(1), 1);
  EXPECT_EQ(RowsOf(basket), (Rows{{u"b", 1}, {u"c", 1}}));
  EXPECT_EQ(basket.Remove(2), 1);
  EXPECT_EQ(basket.Remove(1), std::nullopt);
  EXPECT_TRUE(basket.Empty());
}

TEST(Basket, RemovingAGroupLeavesTheOthers) {
  Basket basket;
  basket.Add(Kind::kConst, u"a", u"");
  basket.Add(Kind::kConst, u"b", u"");
  basket.Add(Kind::kType, u"t", u"");
  basket.RemoveGroup(1);
  EXPECT_EQ(RowsOf(basket), (Rows{{u"t", 3}}));
}

TEST(Basket, OnlyRemovingEverythingEmptiesTheRecord) {
  Basket basket;
  basket.Add(Kind::kConst, u"a",
             u"\x0E"
             u"1");
  basket.Remove(1);
  basket.Add(Kind::kConst, u"b", u"");
  basket.RemoveGroup(1);
  EXPECT_EQ(basket.Record().size(), 2U);
  basket.RemoveAll();
  EXPECT_TRUE(basket.Record().empty());
  EXPECT_TRUE(basket.Empty());
}

TEST(Basket, AnItemAddedAgainIsRenderedAsAtFirst) {
  Basket basket;
  basket.Add(Kind::kConst, u"a",
             u"\x0E"
             u"1");
  basket.Remove(1);
  basket.Add(Kind::kConst, u"a",
             u"\x0E"
             u"2");
  EXPECT_EQ(basket.Text(u"Public"), u"Public Const a = 1\r\n");
  basket.RemoveAll();
  basket.Add(Kind::kConst, u"a",
             u"\x0E"
             u"2");
  EXPECT_EQ(basket.Text(u"Public"), u"Public Const a = 2\r\n");
}

TEST(Basket, StaysGroupedOrderedAndWithoutDuplicates) {
  Random random(13);
  const std::vector<std::u16string> letters = {u"a", u"B", u"b", u"_", u"z"};
  for (int round = 0; round < 200; ++round) {
    Basket basket;
    for (int step = 0; step < 40; ++step) {
      if (random.Below(5) == 0 && !basket.Empty()) {
        const auto count = basket.Entries().size();
        const auto position = static_cast<std::int32_t>(random.Below(count)) + 1;
        const auto selected = basket.Remove(position);
        ASSERT_EQ(selected.has_value(), count > 1);
      } else {
        const auto name = random.Text(letters, 2);
        const auto kind = kKinds[random.Below(3)];
        const auto expected = PlainPlace(basket.Entries(), kind, name);
        const auto position = basket.Add(kind, name, u"");
        ASSERT_EQ(position.value_or(-1), expected);
        if (position) {
          ASSERT_EQ(basket.Entries()[static_cast<std::size_t>(*position - 1)],
                    (GroupedEntry{name, IconOf(kind)}));
        }
      }
      const auto& entries = basket.Entries();
      const auto key = [](const GroupedEntry& e) { return std::pair(e.icon, LowerCase(e.text)); };
      ASSERT_TRUE(std::ranges::is_sorted(entries, {}, key));
      ASSERT_EQ(std::ranges::adjacent_find(entries, {}, key), entries.end());
    }
  }
}

}  // namespace
}  // namespace declarium
