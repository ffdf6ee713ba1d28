#include "library/library_text.h"

#include <gtest/gtest.h>
#include <string>

namespace declarium {
namespace {

// A constant of `length` units in an arena of its own.
void AddItem(Library& library, std::size_t length) {
  StringList item;
  item.Add(std::u16string(length, u'x'));
  auto& lists = library[Kind::kConst];
  lists.names.Add(u"NAME");
  lists.items.KeepArenasOf(item);
  lists.items.AddKept(item[0]);
}

TEST(TextUse, CountsTextsAndEveryArenaOnce) {
  Library library;
  EXPECT_EQ(TextUseOf(library).used, 0U);
  EXPECT_EQ(TextUseOf(library).held, 0U);
  const auto arena = std::make_shared<TextArena>();
  for (auto& [names, items] : library.lists) {
    names.Keep(arena);
    items.Keep(arena);
  }
  library[Kind::kType].names.AddKept(arena->Store(u"abc"));
  library[Kind::kType].items.AddKept(arena->Store(u"de"));
  EXPECT_EQ(TextUseOf(library).used, 5U);
  EXPECT_EQ(TextUseOf(library).held, arena->Capacity());
}

TEST(CompactText, LeavesALibraryThatWastesLittleAsItIs) {
  Library library;
  AddItem(library, 40'000);
  const auto before = library[Kind::kConst].items[0].data();
  CompactText(library);
  EXPECT_EQ(library[Kind::kConst].items[0].data(), before);
}

TEST(CompactText, GivesBackTheArenasOfWhatWasRemoved) {
  Library library;
  for (int i = 0; i < 100; ++i) AddItem(library, 40'000);
  library[Kind::kDeclare].names.Add(u"Beep");
  library[Kind::kDeclare].items.Add(u"\n\"l\"");
  while (library[Kind::kConst].names.size() > 1) RemoveItem(library, Kind::kConst, 0);
  CompactText(library);
  EXPECT_EQ(library[Kind::kConst].names, StringList({u"NAME"}));
  EXPECT_EQ(library[Kind::kConst].items[0], std::u16string(40'000, u'x'));
  EXPECT_EQ(library[Kind::kDeclare].names, StringList({u"Beep"}));
  EXPECT_EQ(library[Kind::kDeclare].items, StringList({u"\n\"l\""}));
  const auto [used, held] = TextUseOf(library);
  EXPECT_LT(held, 2 * used);
}

}  // namespace
}  // namespace declarium
