#include "search/ui/search_hits.h"

#include <gtest/gtest.h>

namespace declarium {
namespace {

Library LibraryOf(std::u16string_view name) {
  Library library;
  library.SetItems(Kind::kType, {{name}, {u""}});
  return library;
}

TEST(SearchHits, AHitIsAnEntryWithItsKindsIcon) {
  const auto library = LibraryOf(u"RECT");
  SearchHits::Block block;
  SearchHits hits(library, block);
  hits.Add({library[Kind::kType].names[0], Kind::kType});
  EXPECT_EQ(hits.Count(), 1);
  EXPECT_EQ(hits.At(1), (ListEntry{u"RECT", 3}));
}

TEST(SearchHits, NamesStayWhenTheLibraryGoes) {
  auto library = LibraryOf(u"A_NAME_THAT_IS_LONGER_THAN_A_SHORT_STRING");
  SearchHits::Block block;
  SearchHits hits(library, block);
  hits.Add({library[Kind::kType].names[0], Kind::kType});
  library = Library();
  EXPECT_EQ(hits.At(1).text, u"A_NAME_THAT_IS_LONGER_THAN_A_SHORT_STRING");
}

TEST(SearchHits, TheNextHitsStandInTheMemoryOfTheEarlierOnesAndAreTheirOwn) {
  const auto library = LibraryOf(u"RECT");
  SearchHits::Block block;
  {
    SearchHits earlier(library, block);
    earlier.Reserve(1'000);
    earlier.Add({library[Kind::kType].names[0], Kind::kType});
  }
  const auto* const memory = block.data();
  EXPECT_GE(block.capacity(), 1'000U);
  {
    SearchHits next(library, block);
    EXPECT_EQ(next.Count(), 0);
    EXPECT_EQ(block.capacity(), 0U);
  }
  EXPECT_EQ(block.data(), memory);
}

}  // namespace
}  // namespace declarium
