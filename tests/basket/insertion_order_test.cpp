#include "basket/insertion_order.h"

#include <gtest/gtest.h>

#include "basket/closure.h"
#include "basket/insertion_text.h"
#include "text/text.h"

namespace declarium {
namespace {

std::u16string ConstItem(std::u16string_view value) {
  return u"\x0E" + std::u16string(value);
}

std::vector<std::u16string> Names(const GroupedList& entries) {
  std::vector<std::u16string> names;
  for (const auto& entry : entries) names.push_back(entry.text);
  return names;
}

using NameList = std::vector<std::u16string>;

TEST(InsertionOrder, PutsARecordBehindTheRecordsThatAreItsMembers) {
  Basket basket;
  basket.Add(Kind::kType, u"A", u"\fc As C\rb As b");
  basket.Add(Kind::kType, u"B", u"\fx As Long");
  basket.Add(Kind::kType, u"C", u"\fb As B");
  basket.Add(Kind::kConst, u"Z", ConstItem(u"1"));
  EXPECT_EQ(InsertionOrder(basket), (GroupedList{{u"Z", 1}, {u"B", 3}, {u"C", 3}, {u"A", 3}}));
}

TEST(InsertionOrder, PutsARecordBehindTheElementsOfItsArraysWithLowerBounds) {
  Basket basket;
  basket.Add(Kind::kType, u"A", u"\fz(0 To 9) As Z");
  basket.Add(Kind::kType, u"Z", u"\fx As Long");
  EXPECT_EQ(Names(InsertionOrder(basket)), (NameList{u"Z", u"A"}));
}

TEST(InsertionOrder, PutsAConstantBehindTheConstantsThatItsValueNames) {
  Basket basket;
  basket.Add(Kind::kConst, u"A", ConstItem(u"c+1 'B"));
  basket.Add(Kind::kConst, u"B", ConstItem(u"A Or (D)"));
  basket.Add(Kind::kConst, u"C", ConstItem(u"\"B\" & D"));
  basket.Add(Kind::kConst, u"D", ConstItem(u"&HB"));
  EXPECT_EQ(Names(InsertionOrder(basket)), (NameList{u"D", u"C", u"A", u"B"}));
}

TEST(InsertionOrder, KeepsTheBasketsOrderWhereThereIsAChoiceAndEndsInACircle) {
  Basket basket;
  basket.Add(Kind::kType, u"A", u"\fb As B");
  basket.Add(Kind::kType, u"B", u"\fa As A");
  basket.Add(Kind::kType, u"C", u"\fx As Long");
  basket.Add(Kind::kConst, u"LOOP", ConstItem(u"LOOP + 1"));
  EXPECT_EQ(InsertionOrder(basket), (GroupedList{{u"LOOP", 1}, {u"B", 3}, {u"A", 3}, {u"C", 3}}));
}

TEST(InsertionOrder, KeepsAnOrderThatIsRightAlready) {
  Basket basket;
  basket.Add(Kind::kConst, u"A", ConstItem(u"1"));
  basket.Add(Kind::kConst, u"B", ConstItem(u"2"));
  basket.Add(Kind::kConst, u"C", ConstItem(u"B + A"));
  EXPECT_EQ(InsertionOrder(basket), basket.Entries());
}

// The name of one of many records or constants, in the order of their numbers.
std::u16string NumberedName(std::size_t number) {
  std::u16string name = u"R000000";
  for (auto digit = name.rbegin(); number > 0; number /= 10, ++digit) {
    *digit = static_cast<char16_t>(u'0' + number % 10);
  }
  return name;
}

TEST(InsertionOrder, RecordsAndConstantsMayBeNestedDeeperThanAnyStack) {
  constexpr std::size_t kDepth = 60'000;
  Library library;
  KindLists types;
  KindLists constants;
  for (std::size_t i = 0; i < kDepth; ++i) {
    const auto next = i + 1 < kDepth ? NumberedName(i + 1) : std::u16string(u"Long");
    types.names.Add(NumberedName(i));
    types.items.Add(u"\fm As " + next);
    constants.names.Add(NumberedName(i));
    constants.items.Add(ConstItem(i + 1 < kDepth ? next : u"1"));
  }
  library.SetItems(Kind::kType, std::move(types));
  library.SetItems(Kind::kConst, std::move(constants));
  Basket basket;
  for (const auto kind : {Kind::kConst, Kind::kType}) {
    const auto first = *FindItem(library, kind, NumberedName(0));
    basket.Add(kind, first.name, first.item);
    for (const auto& reference : FollowSharedItems(library, first)) {
      ASSERT_TRUE(reference.found);
      basket.Add(kind, reference.found->name, reference.found->item);
    }
  }
  const auto order = InsertionOrder(basket);
  ASSERT_EQ(order.size(), 2 * kDepth);
  for (std::size_t i = 0; i < kDepth; ++i) {
    ASSERT_EQ(order[i].text, NumberedName(kDepth - 1 - i));
    ASSERT_EQ(order[kDepth + i].text, NumberedName(kDepth - 1 - i));
  }
  EXPECT_TRUE(
      CreateSelect(order, basket.Record(), kPrivate)
          .starts_with(u"Private Const R059999 = 1\r\nPrivate Const R059998 = R059999\r\n"));
}

}  // namespace
}  // namespace declarium
