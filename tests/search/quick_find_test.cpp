#include "search/quick_find.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <set>

#include "support/texts.h"
#include "text/text.h"

namespace declarium {
namespace {

using Positions = std::vector<std::size_t>;

StringList ListOf(const std::vector<std::u16string>& texts) {
  StringList list;
  for (const auto& text : texts) list.Add(text);
  return list;
}

TEST(FindNames, FindsThePatternAnywhereInAnyCase) {
  const StringList names = {u"GetWindow", u"GetWindowText", u"SetWindow", u"Sleep"};
  EXPECT_EQ(FindNames(names, u"getwindow"), (Positions{0, 1}));
  EXPECT_EQ(FindNames(names, u"GETWINDOW"), (Positions{0, 1}));
  EXPECT_EQ(FindNames(names, u"window"), (Positions{0, 1, 2}));
  EXPECT_EQ(FindNames(names, u"*"), (Positions{0, 1, 2, 3}));
  EXPECT_EQ(FindNames(names, u"nothing"), Positions{});
}

TEST(FindNames, WildcardsWorkAsWildcards) {
  const StringList names = {u"a1c", u"abc", u"ac", u"xabcx"};
  EXPECT_EQ(FindNames(names, u"a?c"), (Positions{0, 1, 3}));
  EXPECT_EQ(FindNames(names, u"a#c"), (Positions{0}));
  EXPECT_EQ(FindNames(names, u"a[!1]c"), (Positions{1, 3}));
  EXPECT_EQ(FindNames(names, u"A[0-9B]C"), (Positions{0, 1, 3}));
}

TEST(FindNames, AMalformedPatternFindsNothing) {
  EXPECT_EQ(FindNames({u"a[b", u"ab"}, u"a["), Positions{});
  EXPECT_EQ(FindNames({u"a"}, u"[z-a]"), Positions{});
}

// A slow literal twin of the type-ahead; also records which rows were read.
struct PlainTypeAhead {
  std::vector<std::u16string> rows;
  std::set<int> read;

  std::u16string Beginning(int i, std::size_t n) {
    if (i >= static_cast<int>(rows.size())) return u"";
    read.insert(i);
    return LowerCase(rows[static_cast<std::size_t>(i)].substr(0, n));
  }
  std::optional<std::size_t> Row(std::u16string_view text) {
    const auto s = LowerCase(text);
    const auto n = s.size();
    const int count = static_cast<int>(rows.size());
    int step = count / 100;
    if (step == 0) step = 1;
    const int last = count - 1;
    int start = count - step;
    for (int i = 0; i <= last; i += step) {
      if (Beginning(i, n) <= s && s <= Beginning(i + step, n)) {
        start = i;
        break;
      }
    }
    for (int j = std::max(start, 0); j <= last; ++j) {
      if (Beginning(j, n) == s) return static_cast<std::size_t>(j);
    }
    return std::nullopt;
  }
};

TEST(TypeAhead, SelectsTheFirstRowThatBeginsWithTheText) {
  const StringList names = {u"Beep", u"GetA", u"GetB", u"Sleep"};
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"get"), 1U);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"GETB"), 2U);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"s"), 3U);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"b"), 0U);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"get?"), std::nullopt) << "no wildcards here";
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"geta1"), std::nullopt);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"x"), std::nullopt);
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"a"), std::nullopt);
}

TEST(TypeAhead, AnEmptyListSelectsNothing) {
  const StringList names;
  EXPECT_EQ(TypeAheadRow(RowsOf(names), u"a"), std::nullopt);
}

TEST(TypeAhead, AgreesWithItsSlowTwinOnSmallListsInAnyOrder) {
  const auto rows = AllTexts(u"aB", 2);
  for (std::size_t a = 0; a < rows.size(); ++a) {
    for (std::size_t b = 0; b < rows.size(); ++b) {
      for (std::size_t c = 0; c < rows.size(); ++c) {
        PlainTypeAhead plain{{rows[a], rows[b], rows[c]}, {}};
        const auto names = ListOf(plain.rows);
        for (const auto& text : AllTexts(u"Ab", 2)) {
          if (text.empty()) continue;
          ASSERT_EQ(TypeAheadRow(RowsOf(names), text), plain.Row(text));
        }
      }
    }
  }
}

TEST(TypeAhead, AgreesWithItsSlowTwinAndReadsNoOtherRows) {
  Random random(14);
  const std::vector<std::u16string> pieces = {u"a", u"B", u"b", u"c", u"_", u"Z"};
  for (const std::size_t count : {1, 99, 100, 101, 199, 200, 250, 999, 1000, 1234}) {
    for (int round = 0; round < 40; ++round) {
      PlainTypeAhead plain{std::vector<std::u16string>(count), {}};
      for (auto& row : plain.rows) row = random.Text(pieces, 5);
      if (round % 5 != 0) {
        std::ranges::sort(plain.rows, {}, [](const auto& row) { return LowerCase(row); });
      }
      const auto text = u"a" + random.Text(pieces, 3);
      std::set<int> read;
      const RowSource rows = {count, [&](std::size_t i) -> std::u16string_view {
                                read.insert(static_cast<int>(i));
                                return plain.rows[i];
                              }};
      ASSERT_EQ(TypeAheadRow(rows, text), plain.Row(text)) << count;
      ASSERT_TRUE(std::ranges::includes(plain.read, read));
    }
  }
}

TEST(TypeAhead, ReadsTwoRowsAHundredthAndThenRowByRow) {
  StringList names;
  for (int i = 0; i < 100'000; ++i) {
    auto number = FromUtf8(std::to_string(i));
    names.Add(u"N" + std::u16string(6 - number.size(), u'0') + number);
  }
  int read = 0;
  const RowSource rows = {names.size(), [&](std::size_t i) {
                            ++read;
                            return names[i];
                          }};
  EXPECT_EQ(TypeAheadRow(rows, u"n099500"), 99'500U);
  EXPECT_LE(read, 2 * 101 + 501);
}

}  // namespace
}  // namespace declarium
