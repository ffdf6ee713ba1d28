#include "library/find_item_index.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

// The jump search written out: walk in steps until a greater name, then scan one step.
std::int32_t PlainFindItemIndex(std::u16string_view name, const StringList& names) {
  const auto t = LowerCase(name);
  if (names.empty()) return -1;
  const int lower = 0;
  const int upper = static_cast<int>(names.size()) - 1;
  const auto lowered = [&](int i) { return LowerCase(names[static_cast<std::size_t>(i)]); };
  int step = static_cast<int>(std::lround(std::sqrt(upper - lower)));
  if (step == 0) step = 1;
  int hi = upper;
  for (int i = lower; i <= upper; i += step) {
    if (lowered(i) > t) {
      hi = i;
      break;
    }
  }
  int lo = hi - step;
  if (lo < lower) lo = lower;
  if (hi > upper) hi = upper;
  for (int j = lo; j <= hi; ++j) {
    if (lowered(j) == t) return j;
  }
  return -1;
}

StringList ListOf(const std::vector<std::u16string>& texts) {
  StringList list;
  for (const auto& text : texts) list.Add(text);
  return list;
}

TEST(FindItemIndex, IgnoresCase) {
  const StringList names = {u"Beep", u"GetTickCount", u"Sleep"};
  EXPECT_EQ(FindItemIndex(u"GETTICKCOUNT", names), 1);
  EXPECT_EQ(FindItemIndex(u"beep", names), 0);
  EXPECT_EQ(FindItemIndex(u"sleeP", names), 2);
  EXPECT_EQ(FindItemIndex(u"Get", names), -1);
}

TEST(FindItemIndex, AnEmptyListHasNothing) {
  EXPECT_EQ(FindItemIndex(u"a", {}), -1);
}

TEST(FindItemIndex, AListOfOneElementHasThatOne) {
  const StringList names = {u"b"};
  EXPECT_EQ(FindItemIndex(u"B", names), 0);
  EXPECT_EQ(FindItemIndex(u"a", names), -1);
  EXPECT_EQ(FindItemIndex(u"c", names), -1);
}

TEST(FindItemIndex, MayMissANameInAListOutOfOrder) {
  const StringList names = {u"b", u"z", u"c", u"d", u"a"};
  EXPECT_EQ(FindItemIndex(u"a", names), -1);
}

TEST(FindItemIndex, GivesTheFirstOfEqualNamesInTheRangeScanned) {
  EXPECT_EQ(FindItemIndex(u"a", {u"A", u"a"}), 0);
  // Steps of one stop at "b", position 2; the scan starts at 1.
  EXPECT_EQ(FindItemIndex(u"a", {u"A", u"a", u"b"}), 1);
  // Steps of two stop at "b", position 4; the scan starts at 2.
  EXPECT_EQ(FindItemIndex(u"a", {u"a", u"a", u"a", u"a", u"b"}), 2);
}

TEST(FindItemIndex, AgreesWithItsSlowTwinOnEverySmallListInAnyOrder) {
  const std::vector<std::u16string> alphabet = {u"a", u"B", u"b", u"c"};
  for (std::size_t length = 0; length <= 6; ++length) {
    std::size_t lists = 1;
    for (std::size_t i = 0; i < length; ++i) lists *= alphabet.size();
    for (std::size_t number = 0; number < lists; ++number) {
      StringList names;
      for (std::size_t i = 0, rest = number; i < length; ++i, rest /= alphabet.size()) {
        names.Add(alphabet[rest % alphabet.size()]);
      }
      for (const std::u16string_view sought : {u"", u"A", u"b", u"C", u"d"}) {
        ASSERT_EQ(FindItemIndex(sought, names), PlainFindItemIndex(sought, names));
      }
    }
  }
}

TEST(FindItemIndex, AgreesWithItsSlowTwinOnRandomLists) {
  Random random(1);
  const std::vector<std::u16string> pieces = {u"a", u"B", u"_", u"1", u"Č", u"z"};
  for (int round = 0; round < 300; ++round) {
    std::vector<std::u16string> texts(random.Below(200));
    for (auto& text : texts) text = random.Text(pieces, 3);
    if (round % 4 != 0) std::ranges::sort(texts, {}, [](const auto& t) { return LowerCase(t); });
    const auto names = ListOf(texts);
    for (int i = 0; i < 50; ++i) {
      const auto sought = random.Text(pieces, 3);
      ASSERT_EQ(FindItemIndex(sought, names), PlainFindItemIndex(sought, names));
    }
  }
}

TEST(FindItemIndex, FindsEveryNameOfASortedListOfAnyLength) {
  StringList names;
  for (int length = 1; length <= 150; ++length) {
    names.Add(std::u16string(static_cast<std::size_t>(length), u'n'));
    for (std::size_t i = 0; i < names.size(); ++i) {
      ASSERT_EQ(FindItemIndex(names[i], names), static_cast<std::int32_t>(i)) << length;
    }
  }
}

}  // namespace
}  // namespace declarium
