#include "library/library.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>

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

Library SmallLibrary() {
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"B"},
                                  {u"\x0E"
                                   u"1",
                                   u"\x0E"
                                   u"2"}});
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
  EXPECT_TRUE(library.Title().empty());
  EXPECT_FALSE(library.dirty);
}

TEST(Library, HasItemsWhenAnyKindHas) {
  for (const auto kind : kKinds) {
    Library library;
    library.SetItems(kind, {{u"x"}, {u""}});
    EXPECT_TRUE(library.HasItems());
  }
}

TEST(Library, FindsAnItemWithItsStoredNameAndString) {
  const auto library = SmallLibrary();
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
  library.SetItems(Kind::kDeclare, {{u"A", u"B"}, {u"\n\"lib\""}});
  EXPECT_EQ(FindItem(library, Kind::kDeclare, u"B")->item, u"");
}

TEST(Library, RemovingAnItemRemovesItFromBothLists) {
  auto library = SmallLibrary();
  library.RemoveItem(Kind::kConst, 0);
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"B"}));
  EXPECT_EQ(library[Kind::kConst].items, StringList({u"\x0E"
                                                     u"2"}));
  library.RemoveItem(Kind::kConst, 0);
  EXPECT_EQ(library[Kind::kConst].names.UpperBound(), -1);
  EXPECT_EQ(library[Kind::kConst].items.UpperBound(), -1);
}

TEST(Library, RemovingANameWithoutAnItemStringLeavesTheItemStrings) {
  Library library;
  library.SetItems(Kind::kType, {{u"A", u"B"}, {u"a"}});
  library.RemoveItem(Kind::kType, 1);
  EXPECT_EQ(library[Kind::kType].names, StringList({u"A"}));
  EXPECT_EQ(library[Kind::kType].items, StringList({u"a"}));
}

TEST(Library, ItsRevisionTellsEveryChangeOfItsContent) {
  Library library;
  const std::function<void()> changes[] = {
      [&] { library.SetTitle(u"T"); },
      [&] { library.SetItems(Kind::kConst, {{u"A", u"B"}, {u"1", u"2"}}); },
      [&] { library.RemoveItem(Kind::kConst, 0); },
      [&] { library.TakeNames({}); },
      [&] { library.TakeItems({}); },
      [&] { library = Library(); },
  };
  std::set<std::uint64_t> revisions = {library.Revision()};
  for (const auto& change : changes) {
    change();
    EXPECT_TRUE(revisions.insert(library.Revision()).second);
  }
  library.dirty = true;
  library.path = "a.api";
  EXPECT_TRUE(revisions.contains(library.Revision())) << "the file is no content";
}

TEST(Library, IsNotWholeBetweenItsNamesAndItsItems) {
  Library library;
  EXPECT_TRUE(library.IsWhole());
  library.TakeNames({});
  EXPECT_FALSE(library.IsWhole());
  library.TakeItems({});
  EXPECT_TRUE(library.IsWhole());
}

TEST(Library, TheCaptionIsTheTitleAndTheProgramsName) {
  EXPECT_EQ(CaptionOf(u"Win32"), u"Win32 - Declarium 3.0");
  EXPECT_EQ(CaptionOf(u""), u" - Declarium 3.0");
}

TEST(DifferenceBetween, CountsByKindAndExactName) {
  Library first;
  first.SetItems(Kind::kConst, {{u"A", u"a", u"B", u"C"}, {u"1", u"2", u"3", u"4"}});
  first.SetItems(Kind::kType, {{u"A"}, {u"x"}});
  Library second;
  second.SetTitle(u"another");
  second.SetItems(Kind::kConst, {{u"A", u"B", u"D"}, {u"1", u"30", u"5"}});
  second.SetItems(Kind::kDeclare, {{u"A"}, {u"x"}});
  EXPECT_EQ(DifferenceBetween(first, second),
            (LibraryDifference{.added = 2, .removed = 3, .changed = 1}));
  EXPECT_EQ(DifferenceBetween(first, first), LibraryDifference{});
}

TEST(FindItem, FindsNothingInALibraryThatIsNotWhole) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A"}, {}});
  EXPECT_TRUE(FindItem(library, Kind::kConst, u"A"));
  library.TakeNames({StringList{u"A"}});
  EXPECT_FALSE(FindItem(library, Kind::kConst, u"A"));
  library.TakeItems({StringList{u"1"}});
  EXPECT_TRUE(FindItem(library, Kind::kConst, u"A"));
}

}  // namespace
}  // namespace declarium
