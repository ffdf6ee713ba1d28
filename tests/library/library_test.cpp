#include "library/library.h"

#include <gtest/gtest.h>

#include "library/item.h"
#include "library/library_difference.h"

namespace declarium {
namespace {

TEST(Kind, CodesAreTheSelectorsRowsAndIconsOneMore) {
  EXPECT_EQ(KindCode(Kind::kConst), 0);
  EXPECT_EQ(KindCode(Kind::kDeclare), 1);
  EXPECT_EQ(KindCode(Kind::kType), 2);
  for (const auto kind : kKinds) {
    EXPECT_EQ(IconOf(kind), KindCode(kind) + 1);
    EXPECT_EQ(KindOfCode(KindCode(kind)), kind);
    EXPECT_EQ(KindOfIcon(IconOf(kind)), kind);
  }
  for (const int code : {-1, 3, 100}) EXPECT_FALSE(KindOfCode(code));
  EXPECT_FALSE(KindOfIcon(0));
  EXPECT_EQ(KindName(Kind::kConst), u"Const");
  EXPECT_EQ(KindName(Kind::kDeclare), u"Declare");
  EXPECT_EQ(KindName(Kind::kType), u"Type");
}

TEST(Item, AConstIsTypeAndValue) {
  const auto [type, value] = SplitConst(
      u"Long\x0E"
      u"1");
  EXPECT_EQ(type, u"Long");
  EXPECT_EQ(value, u"1");
  EXPECT_EQ(SplitConst(u"\x0E"
                       u"1")
                .type,
            u"");
}

TEST(Item, ADeclareIsMarkerAndTail) {
  const auto [marker, tail] = SplitDeclare(u"\x0B\"kernel32\" ()");
  EXPECT_EQ(marker, u"\x0B");
  EXPECT_EQ(tail, u"\"kernel32\" ()");
  EXPECT_EQ(SplitDeclare(u"").marker, u"");
  EXPECT_EQ(SplitDeclare(u"").tail, u"");
}

TEST(Item, ATypeIsHeaderRestAndMembers) {
  const auto [header_rest, members] = SplitType(
      u"'rest\x0C"
      u"x As Long\ry As Long");
  EXPECT_EQ(header_rest, u"'rest");
  EXPECT_EQ(members, u"x As Long\ry As Long");
}

TEST(Item, WithoutItsSeparatorTheSecondFieldIsEmpty) {
  EXPECT_EQ(SplitConst(u"Long").type, u"Long");
  EXPECT_EQ(SplitConst(u"Long").value, u"");
  EXPECT_EQ(SplitType(u"").header_rest, u"");
  EXPECT_EQ(SplitType(u"").members, u"");
}

TEST(Item, AFurtherSeparatorEndsTheSecondField) {
  EXPECT_EQ(SplitConst(u"a\x0E"
                       u"b\x0E"
                       u"c")
                .value,
            u"b");
  EXPECT_EQ(SplitType(u"a\x0C"
                      u"b\x0C"
                      u"c")
                .members,
            u"b");
}

Library SmallDatabase() {
  Library library;
  library[Kind::kConst].names = {u"A", u"B"};
  library[Kind::kConst].items = {
      u"\x0E"
      u"1",
      u"\x0E"
      u"2"};
  return library;
}

TEST(Library, StartsEmpty) {
  const Library library;
  for (const auto kind : kKinds) {
    EXPECT_EQ(library[kind].names.UpperBound(), -1);
    EXPECT_EQ(library[kind].items.UpperBound(), -1);
  }
  EXPECT_FALSE(library.HasItems());
  EXPECT_TRUE(library.path.empty());
  EXPECT_TRUE(library.title.empty());
  EXPECT_FALSE(library.dirty);
}

TEST(Library, HasItemsWhenAnyKindHas) {
  for (const auto kind : kKinds) {
    Library library;
    library[kind].names.Add(u"x");
    EXPECT_TRUE(library.HasItems());
  }
}

TEST(Library, FindsAnItemWithItsStoredNameAndString) {
  const auto library = SmallDatabase();
  const auto found = FindItem(library, Kind::kConst, u"b");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->kind, Kind::kConst);
  EXPECT_EQ(found->name, u"B");
  EXPECT_EQ(found->item,
            u"\x0E"
            u"2");
  EXPECT_FALSE(FindItem(library, Kind::kType, u"b"));
}

TEST(Library, ANameWithoutAnItemStringHasAnEmptyOne) {
  Library library;
  library[Kind::kDeclare].names = {u"A", u"B"};
  library[Kind::kDeclare].items = {u"\n\"lib\""};
  EXPECT_EQ(FindItem(library, Kind::kDeclare, u"B")->item, u"");
}

TEST(Library, RemovingAnItemRemovesItFromBothLists) {
  auto library = SmallDatabase();
  RemoveItem(library, Kind::kConst, 0);
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"B"}));
  EXPECT_EQ(library[Kind::kConst].items, StringList({u"\x0E"
                                                     u"2"}));
  RemoveItem(library, Kind::kConst, 0);
  EXPECT_EQ(library[Kind::kConst].names.UpperBound(), -1);
  EXPECT_EQ(library[Kind::kConst].items.UpperBound(), -1);
}

TEST(Library, RemovingANameWithoutAnItemStringLeavesTheItemStrings) {
  Library library;
  library[Kind::kType].names = {u"A", u"B"};
  library[Kind::kType].items = {u"a"};
  RemoveItem(library, Kind::kType, 1);
  EXPECT_EQ(library[Kind::kType].names, StringList({u"A"}));
  EXPECT_EQ(library[Kind::kType].items, StringList({u"a"}));
}

TEST(Library, TheCaptionIsTheTitleAndTheProgramsName) {
  EXPECT_EQ(CaptionOf(u"Win32"), u"Win32 - Declarium 3.0");
  EXPECT_EQ(CaptionOf(u""), u" - Declarium 3.0");
}

TEST(DifferenceBetween, CountsByKindAndExactName) {
  Library first;
  first[Kind::kConst].names = {u"A", u"a", u"B", u"C"};
  first[Kind::kConst].items = {u"1", u"2", u"3", u"4"};
  first[Kind::kType].names = {u"A"};
  first[Kind::kType].items = {u"x"};
  Library second;
  second.title = u"another";
  second[Kind::kConst].names = {u"A", u"B", u"D"};
  second[Kind::kConst].items = {u"1", u"30", u"5"};
  second[Kind::kDeclare].names = {u"A"};
  second[Kind::kDeclare].items = {u"x"};
  EXPECT_EQ(DifferenceBetween(first, second),
            (LibraryDifference{.added = 2, .removed = 3, .changed = 1}));
  EXPECT_EQ(DifferenceBetween(first, first), LibraryDifference{});
}

TEST(FindItem, FindsNothingInALibraryThatIsNotWhole) {
  Library library;
  library[Kind::kConst].names = {u"A"};
  EXPECT_TRUE(FindItem(library, Kind::kConst, u"A"));
  library.whole = false;
  EXPECT_FALSE(FindItem(library, Kind::kConst, u"A"));
}

}  // namespace
}  // namespace declarium
