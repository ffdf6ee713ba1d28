#include "library/library_text.h"

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace declarium {
namespace {

// Adds a constant of `length` units in an arena of its own.
void AddItem(KindLists& lists, std::size_t length) {
  StringList item;
  item.Add(std::u16string(length, u'x'));
  lists.names.Add(u"NAME");
  lists.items.KeepArenasOf(item);
  lists.items.AddKept(item[0]);
}

TEST(TextUse, CountsTextsAndEveryArenaOnce) {
  std::array<KindLists, kKindCount> lists;
  EXPECT_EQ(TextUseOf(lists).used, 0U);
  EXPECT_EQ(TextUseOf(lists).held, 0U);
  const auto arena = std::make_shared<TextArena>();
  for (auto& [names, items] : lists) {
    names.Keep(arena);
    items.Keep(arena);
  }
  lists[2].names.AddKept(arena->Store(u"abc"));
  lists[2].items.AddKept(arena->Store(u"de"));
  EXPECT_EQ(TextUseOf(lists).used, 5U);
  EXPECT_EQ(TextUseOf(lists).held, arena->Capacity());
}

TEST(CompactText, LeavesListsThatWasteLittleAsTheyAre) {
  KindLists constants;
  AddItem(constants, 40'000);
  const auto before = constants.items[0].data();
  CompactText({&constants, 1});
  EXPECT_EQ(constants.items[0].data(), before);
}

TEST(CompactText, GivesBackTheArenasOfWhatWasRemoved) {
  std::array<KindLists, kKindCount> lists;
  auto& [constants, procedures, records] = lists;
  for (int i = 0; i < 100; ++i) AddItem(constants, 40'000);
  procedures.names.Add(u"Beep");
  procedures.items.Add(u"\n\"l\"");
  while (constants.names.size() > 1) {
    constants.names.RemoveAt(0);
    constants.items.RemoveAt(0);
  }
  CompactText(lists);
  EXPECT_EQ(constants.names, StringList({u"NAME"}));
  EXPECT_EQ(constants.items[0], std::u16string(40'000, u'x'));
  EXPECT_EQ(procedures.names, StringList({u"Beep"}));
  EXPECT_EQ(procedures.items, StringList({u"\n\"l\""}));
  const auto [used, held] = TextUseOf(lists);
  EXPECT_LT(held, 2 * used);
}

}  // namespace
}  // namespace declarium
