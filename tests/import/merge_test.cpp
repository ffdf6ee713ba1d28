#include "import/merge.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "library/find_item_index.h"
#include "library/library_text.h"
#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

using Pair = std::pair<std::u16string, std::u16string>;
using Pairs = std::vector<Pair>;

ParsedItems Parsed(Kind kind, const Pairs& pairs) {
  ParsedItems parsed;
  auto& [names, items] = parsed.lists[static_cast<std::size_t>(kind)];
  for (const auto& [name, item] : pairs) {
    names.Add(name);
    items.Add(item);
  }
  return parsed;
}

void Put(Library& library, Kind kind, const Pairs& pairs) {
  auto lists = library[kind];
  for (const auto& [name, item] : pairs) {
    lists.names.Add(name);
    lists.items.Add(item);
  }
  library.SetItems(kind, std::move(lists));
}

Pairs PairsOf(const Library& library, Kind kind) {
  Pairs pairs;
  const auto& [names, items] = library[kind];
  EXPECT_EQ(names.size(), items.size());
  for (std::size_t i = 0; i < names.size(); ++i) pairs.emplace_back(names[i], items[i]);
  return pairs;
}

Pairs Merged(const Pairs& parsed, const Pairs& existing, Existing keep) {
  Library library;
  Put(library, Kind::kConst, existing);
  MergeItems(library, Parsed(Kind::kConst, parsed), keep);
  return PairsOf(library, Kind::kConst);
}

TEST(Merge, SortsByNameWithoutRegardToCase) {
  EXPECT_EQ(Merged({{u"b", u"1"}, {u"C", u"2"}, {u"A", u"3"}, {u"_", u"4"}}, {}, Existing::kKeep),
            (Pairs{{u"_", u"4"}, {u"A", u"3"}, {u"b", u"1"}, {u"C", u"2"}}));
}

TEST(Merge, KeepsExistingItemsOrDropsThem) {
  EXPECT_EQ(Merged({{u"b", u"1"}}, {{u"a", u"2"}}, Existing::kKeep),
            (Pairs{{u"a", u"2"}, {u"b", u"1"}}));
  EXPECT_EQ(Merged({{u"b", u"1"}}, {{u"a", u"2"}}, Existing::kReplace), (Pairs{{u"b", u"1"}}));
}

TEST(Merge, ReplacingByNothingLeavesNothing) {
  EXPECT_TRUE(Merged({}, {{u"a", u"2"}}, Existing::kReplace).empty());
  EXPECT_TRUE(Merged({}, {}, Existing::kKeep).empty());
}

TEST(Merge, OfEqualNamesOneIsLeft) {
  EXPECT_EQ(Merged({{u"a", u"new"}}, {{u"a", u"old"}}, Existing::kReplace),
            (Pairs{{u"a", u"new"}}));
  EXPECT_EQ(Merged({{u"a", u"new"}}, {{u"a", u"old"}}, Existing::kKeep), (Pairs{{u"a", u"old"}}));
  EXPECT_EQ(Merged({{u"a", u"1"}, {u"a", u"2"}}, {}, Existing::kKeep), (Pairs{{u"a", u"2"}}));
}

TEST(Merge, PositionsAreComparedAsText) {
  // The imported item is at position 2, the existing one at 10: "10" stands before "2".
  Pairs parsed = {{u"x0", u""}, {u"a", u"new"}};
  for (int i = 0; i < 7; ++i) parsed.emplace_back(u"y" + std::u16string(1, u'0' + i), u"");
  ASSERT_EQ(parsed.size(), 9U);
  const auto merged = Merged(parsed, {{u"a", u"old"}}, Existing::kKeep);
  EXPECT_EQ(merged.front(), (Pair{u"a", u"new"}));
}

TEST(Merge, NamelessItemsAreGoneBeforePositionsAreCounted) {
  // With the nameless one counted the existing item would be at position 10 and lose.
  Pairs parsed = {{u"", u"nameless"}, {u"a", u"new"}};
  for (int i = 0; i < 7; ++i) parsed.emplace_back(u"y" + std::u16string(1, u'0' + i), u"");
  const auto merged = Merged(parsed, {{u"a", u"old"}}, Existing::kKeep);
  EXPECT_EQ(merged.front(), (Pair{u"a", u"old"}));
  EXPECT_EQ(Merged({{u"", u"x"}}, {{u"", u"y"}}, Existing::kKeep), Pairs{});
}

TEST(Merge, NamesThatDifferInCaseAreAllKept) {
  EXPECT_EQ(Merged({{u"Rect", u"1"}, {u"RECT", u"2"}}, {}, Existing::kKeep),
            (Pairs{{u"Rect", u"1"}, {u"RECT", u"2"}}));
}

TEST(Merge, EqualNamesPartedByACaseVariantAreBothKept) {
  EXPECT_EQ(Merged({{u"Rect", u"1"}, {u"RECT", u"2"}, {u"Rect", u"3"}}, {}, Existing::kKeep),
            (Pairs{{u"Rect", u"1"}, {u"RECT", u"2"}, {u"Rect", u"3"}}));
}

TEST(Merge, ThePositionStandsBehindTheLastCharacter27) {
  EXPECT_EQ(Merged({{u"a\x1B"
                     u"9",
                     u"1"},
                    {u"a", u"2"}},
                   {}, Existing::kKeep),
            (Pairs{{u"a", u"2"},
                   {u"a\x1B"
                    u"9",
                    u"1"}}));
}

TEST(Merge, AnExistingNameWithoutAnItemStringGetsAnEmptyOne) {
  Library library;
  library.SetItems(Kind::kType, {{u"A", u"B"}, {u"a"}});
  MergeItems(library, {}, Existing::kKeep);
  EXPECT_EQ(PairsOf(library, Kind::kType), (Pairs{{u"A", u"a"}, {u"B", u""}}));
}

TEST(Merge, TreatsTheKindsAlikeAndApart) {
  for (const auto kind : kKinds) {
    Library library;
    for (const auto other : kKinds) Put(library, other, {{u"a", u"old"}});
    MergeItems(library, Parsed(kind, {{u"b", u"new"}}), Existing::kKeep);
    for (const auto other : kKinds) EXPECT_EQ(library[other].names.size(), other == kind ? 2U : 1U);
    MergeItems(library, Parsed(kind, {{u"b", u"new"}}), Existing::kReplace);
    for (const auto other : kKinds) EXPECT_EQ(library[other].names.size(), other == kind ? 1U : 0U);
  }
}

TEST(Merge, LeavesTitlePathAndChangedFlag) {
  Library library;
  library.SetTitle(u"T");
  library.path = "p";
  MergeItems(library, Parsed(Kind::kConst, {{u"a", u"1"}}), Existing::kKeep);
  EXPECT_EQ(library.Title(), u"T");
  EXPECT_EQ(library.path, "p");
  EXPECT_FALSE(library.dirty);
}

TEST(Merge, TheLibraryOutlivesWhatWasParsed) {
  Library library;
  {
    auto parsed = ParseDeclarations({u"Const B = 1\r\nConst A = 2", {}});
    MergeItems(library, parsed, Existing::kKeep);
  }
  MergeItems(library, {}, Existing::kKeep);
  EXPECT_EQ(PairsOf(library, Kind::kConst), (Pairs{{u"A",
                                                    u"\x0E"
                                                    u"2"},
                                                   {u"B",
                                                    u"\x0E"
                                                    u"1"}}));
}

// Keys, sort and walk written out.
Pairs PlainMerge(const Pairs& parsed, const Pairs& existing) {
  Pairs combined;
  for (const auto& pairs : {parsed, existing}) {
    for (const auto& pair : pairs) {
      if (!pair.first.empty()) combined.push_back(pair);
    }
  }
  std::vector<std::pair<std::u16string, std::size_t>> keys;
  for (std::size_t i = 0; i < combined.size(); ++i) {
    const auto position = FromUtf8(std::to_string(i + 1));
    keys.emplace_back(LowerCase(combined[i].first) + u'\x1B' + position, i);
  }
  std::ranges::sort(keys);
  Pairs result;
  std::u16string previous;
  for (const auto& [key, index] : keys) {
    const auto& item = combined[index];
    if (item.first != previous) result.emplace_back();
    result.back() = item;
    previous = item.first;
  }
  return result;
}

TEST(Merge, AgreesWithItsSlowTwinOnRandomLists) {
  Random random(6);
  const std::vector<std::u16string> pieces = {u"a", u"A", u"b", u"_", u"č", u"Č"};
  for (int round = 0; round < 3'000; ++round) {
    const auto random_pairs = [&] {
      Pairs pairs(random.Below(25));
      for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = {random.Text(pieces, 2), FromUtf8(std::to_string(random.Below(100000)))};
      }
      return pairs;
    };
    const auto parsed = random_pairs();
    const auto existing = random_pairs();
    ASSERT_EQ(Merged(parsed, existing, Existing::kKeep), PlainMerge(parsed, existing));
    ASSERT_EQ(Merged(parsed, existing, Existing::kReplace), PlainMerge(parsed, {}));
  }
}

TEST(Merge, KeepsTheOrderThatTheLookupNeeds) {
  Random random(8);
  const std::vector<std::u16string> pieces = {u"a", u"A", u"b", u"_", u"z", u"9"};
  Library library;
  std::set<std::u16string> known;
  for (int round = 0; round < 60; ++round) {
    Pairs parsed(random.Below(10));
    for (auto& pair : parsed) pair = {u"n" + random.Text(pieces, 4), u"item"};
    for (const auto& pair : parsed) known.insert(pair.first);
    MergeItems(library, Parsed(Kind::kDeclare, parsed), Existing::kKeep);
    const auto& names = library[Kind::kDeclare].names;
    ASSERT_TRUE(std::ranges::is_sorted(names, {}, [](auto n) { return LowerCase(n); }));
    for (const auto& name : known) ASSERT_GE(FindItemIndex(name, names), 0);
  }
}

TEST(SortedPositions, AUnitBehindTwoDifferentLettersOutsideLatin1DecidesNothing) {
  const std::u16string_view texts[] = {u"\u0161a", u"\u010Db", u"\u010Da"};
  EXPECT_EQ(SortedPositions(texts), (std::vector<std::size_t>{2, 1, 0}));
}

TEST(MergeItems, ItemsAddedOneByOneTakeHardlyMoreMemoryThanTheirText) {
  Library library;
  for (int i = 0; i < 2'000; ++i) {
    const auto number = std::to_string(i % 100);
    MergeItems(library, ParseSourceFile("Const ADDED_" + number + " = " + number + "\r\n"),
               Existing::kKeep);
  }
  EXPECT_EQ(library[Kind::kConst].names.size(), 100U);
  const auto [used, held] = TextUseOf(library.Lists());
  EXPECT_LT(held, 2 * used + 1024 * 1024) << "in units; 64 KB for each would be 64 times as much";
}

}  // namespace
}  // namespace declarium
