#include "library/string_list.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace declarium {
namespace {

std::vector<std::u16string> Texts(const StringList& list) {
  return {list.begin(), list.end()};
}

using Strings = std::vector<std::u16string>;

StringList SplitText(std::u16string_view text, char16_t separator) {
  const auto arena = std::make_shared<TextArena>();
  return StringList::Split(arena->Store(text), separator, arena);
}

TEST(StringList, AnEmptyListHasUpperBoundMinusOne) {
  const StringList list;
  EXPECT_EQ(list.UpperBound(), -1);
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(StringList({u"a"}).UpperBound(), 0);
}

TEST(StringList, SplittingGivesThePiecesBetweenTheSeparators) {
  EXPECT_EQ(Texts(SplitText(u"a|b||c", u'|')), (Strings{u"a", u"b", u"", u"c"}));
  EXPECT_EQ(Texts(SplitText(u"|", u'|')), (Strings{u"", u""}));
  EXPECT_EQ(Texts(SplitText(u"a", u'|')), (Strings{u"a"}));
}

TEST(StringList, SplittingAnEmptyTextGivesAnEmptyList) {
  EXPECT_EQ(SplitText(u"", u'|').UpperBound(), -1);
}

TEST(StringList, ATextBeyondTheEndReadsAsEmpty) {
  const StringList list = {u"a"};
  EXPECT_EQ(list.At(0), u"a");
  EXPECT_EQ(list.At(1), u"");
}

TEST(StringList, RemovingTheOnlyElementLeavesAnEmptyList) {
  StringList list = {u"a"};
  RemoveListItem(list, 0);
  EXPECT_EQ(list.UpperBound(), -1);
}

TEST(StringList, RemovingTheLastElementMovesNothing) {
  StringList list = {u"a", u"b", u"c"};
  RemoveListItem(list, 2);
  EXPECT_EQ(Texts(list), (Strings{u"a", u"b"}));
}

TEST(StringList, RemovingClosesTheGap) {
  StringList list = {u"a", u"b", u"c"};
  RemoveListItem(list, 0);
  EXPECT_EQ(Texts(list), (Strings{u"b", u"c"}));
}

TEST(StringList, ACopyOutlivesTheListAndChangesAlone) {
  StringList copy;
  {
    StringList list = {u"a", u"b"};
    copy = list;
    RemoveListItem(list, 0);
  }
  copy.Add(u"c");
  EXPECT_EQ(Texts(copy), (Strings{u"a", u"b", u"c"}));
}

TEST(StringList, KeepsTheTextsOfAnotherListAlive) {
  StringList taken;
  {
    const StringList list = {u"a"};
    taken.KeepArenasOf(list);
    taken.AddKept(list[0]);
    taken.AddKept(list[0]);
    taken.ReplaceKept(1, list[0].substr(1));
  }
  EXPECT_EQ(Texts(taken), (Strings{u"a", u""}));
}

TEST(StringList, ClearingEmptiesItForNewTexts) {
  StringList list = {u"a"};
  list.Clear();
  EXPECT_TRUE(list.empty());
  list.Add(u"b");
  EXPECT_EQ(list, StringList({u"b"}));
}

TEST(TextArena, TextsStayWhereTheyAreWhateverComesAfter) {
  TextArena arena;
  const auto first = arena.Store(u"first");
  std::vector<std::u16string_view> stored;
  const std::u16string long_text(100'000, u'x');
  for (int i = 0; i < 5000; ++i) {
    stored.push_back(arena.Store(u"abcdefghij"));
    if (i % 1000 == 0) stored.push_back(arena.Store(long_text));
  }
  EXPECT_EQ(first, u"first");
  for (const auto text : stored) ASSERT_TRUE(text == u"abcdefghij" || text == long_text);
}

TEST(TextArena, RoomGivenBackIsUsedNext) {
  TextArena arena;
  const auto room = arena.Allocate(10);
  arena.Trim(room, 4);
  EXPECT_EQ(arena.Allocate(1).data(), room.data() + 4);
}

TEST(TextArena, OnlyTheNewestRoomIsGivenBack) {
  TextArena arena;
  const auto older = arena.Allocate(10);
  const auto newer = arena.Allocate(10);
  arena.Trim(older, 0);
  EXPECT_EQ(arena.Allocate(1).data(), newer.data() + 10);
}

}  // namespace
}  // namespace declarium
