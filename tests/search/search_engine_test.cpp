#include "search/search_engine.h"

#include <gtest/gtest.h>

#include "text/text.h"

namespace declarium {
namespace {

// Writes down everything the search reports, with a clock that goes on by `tick` at every look.
class Recorder : public SearchReceiver {
 public:
  explicit Recorder(std::uint32_t tick = 0, std::uint32_t start = 1000)
      : tick_(tick), now_(start) {}

  void Begin(std::int32_t maximum) override { begins.push_back(maximum); }
  void Hit(const SearchHit& hit) override {
    hits.push_back(std::u16string(hit.name) + u"/" +
                   static_cast<char16_t>(u'0' + IconOf(hit.kind)));
  }
  void Position(std::int32_t position) override { positions.push_back(position); }
  void Count(std::int32_t hit_count) override { counts.push_back(hit_count); }
  void End() override { ++ends; }
  std::uint32_t TickCount() override { return now_ += tick_; }

  std::vector<std::int32_t> begins;
  std::vector<std::u16string> hits;
  std::vector<std::int32_t> positions;
  std::vector<std::int32_t> counts;
  int ends = 0;

 private:
  std::uint32_t tick_;
  std::uint32_t now_;
};

using Numbers = std::vector<std::int32_t>;
using Strings = std::vector<std::u16string>;

Library SmallLibrary() {
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"b"},
                                  {u"\x0E"
                                   u"1",
                                   u"\x0E"
                                   u"2"}});
  library.SetItems(Kind::kDeclare, {{u"A"}, {u"\n\"l\" (x As Long)"}});
  library.SetItems(Kind::kType, {{u"A", u"C"}, {u"\x0Cx As Long", u"\x0Cy As RECT"}});
  return library;
}

Library ConstLibrary(int count) {
  KindLists constants;
  for (int i = 0; i < count; ++i) {
    constants.names.Add(u"N" + FromUtf8(std::to_string(i)));
    constants.items.Add(u"\x0E" + FromUtf8(std::to_string(i % 2)));
  }
  Library library;
  library.SetItems(Kind::kConst, std::move(constants));
  return library;
}

SearchCriteria WholeNameIs(std::u16string text) {
  SearchCriteria criteria;
  criteria.nameText = std::move(text);
  criteria.nameWhole = true;
  return criteria;
}

TEST(Search, GoesThroughConstsDeclaresAndTypesInListOrder) {
  Recorder recorder;
  EXPECT_EQ(Search(WholeNameIs(u"*"), SmallLibrary(), recorder), SearchOutcome::kDone);
  EXPECT_EQ(recorder.hits, (Strings{u"A/1", u"b/1", u"A/2", u"A/3", u"C/3"}));
  EXPECT_EQ(recorder.begins, (Numbers{2}));
  EXPECT_EQ(recorder.ends, 1);
}

TEST(Search, LooksAtTheCheckedKindsOnly) {
  auto criteria = WholeNameIs(u"*");
  criteria.searchConsts = false;
  criteria.searchDeclares = false;
  Recorder types;
  EXPECT_EQ(Search(criteria, SmallLibrary(), types), SearchOutcome::kDone);
  EXPECT_EQ(types.hits, (Strings{u"A/3", u"C/3"}));
  criteria.searchTypes = false;
  criteria.searchConsts = true;
  Recorder consts;
  EXPECT_EQ(Search(criteria, SmallLibrary(), consts), SearchOutcome::kDone);
  EXPECT_EQ(consts.hits, (Strings{u"A/1", u"b/1"}));
}

TEST(Search, ListsAnItemOnceThoughSeveralCriteriaHit) {
  SearchCriteria criteria;
  criteria.typeText = u"long";
  criteria.argText = u"x";
  criteria.fullText = u"long";
  Recorder recorder;
  EXPECT_EQ(Search(criteria, SmallLibrary(), recorder), SearchOutcome::kDone);
  EXPECT_EQ(recorder.hits, (Strings{u"A/2", u"A/3"}));
}

void ExpectUntouched(const Recorder& recorder) {
  EXPECT_TRUE(recorder.begins.empty()) << "earlier results stay";
  EXPECT_TRUE(recorder.hits.empty());
  EXPECT_TRUE(recorder.positions.empty());
  EXPECT_TRUE(recorder.counts.empty());
  EXPECT_EQ(recorder.ends, 0);
}

TEST(Search, WithoutCriteriaNothingIsSearched) {
  Recorder recorder;
  EXPECT_EQ(Search({}, SmallLibrary(), recorder), SearchOutcome::kNoCriteria);
  ExpectUntouched(recorder);
}

TEST(Search, NoCriteriaIsSaidBeforeNotEnoughItems) {
  Recorder recorder;
  EXPECT_EQ(Search({}, Library(), recorder), SearchOutcome::kNoCriteria);
}

TEST(Search, KindsWithAtMostOneItemEachAreNotEnough) {
  Recorder recorder;
  EXPECT_EQ(Search(WholeNameIs(u"*"), Library(), recorder), SearchOutcome::kNotEnough);
  auto declares = WholeNameIs(u"*");
  declares.searchConsts = declares.searchTypes = false;
  EXPECT_EQ(Search(declares, SmallLibrary(), recorder), SearchOutcome::kNotEnough);
  Library one_each;
  one_each.SetItems(Kind::kConst, {{u"A"}, {}});
  one_each.SetItems(Kind::kType, {{u"B"}, {}});
  EXPECT_EQ(Search(WholeNameIs(u"*"), one_each, recorder), SearchOutcome::kNotEnough);
  auto none = WholeNameIs(u"*");
  none.searchConsts = none.searchDeclares = none.searchTypes = false;
  EXPECT_EQ(Search(none, SmallLibrary(), recorder), SearchOutcome::kNotEnough);
  ExpectUntouched(recorder);
}

TEST(Search, ANameWithoutAnItemStringIsSearchedAsOneWithAnEmptyOne) {
  Library library;
  library.SetItems(Kind::kConst, {{u"A", u"B"}, {}});
  SearchCriteria criteria;
  criteria.valueText = u"*";
  Recorder recorder;
  EXPECT_EQ(Search(criteria, library, recorder), SearchOutcome::kDone);
  EXPECT_EQ(recorder.hits, (Strings{u"A/1", u"B/1"}));
}

TEST(SearchProgress, IsWrittenForEveryItemOfASmallSearch) {
  Recorder recorder;
  Search(WholeNameIs(u"nothing"), ConstLibrary(5), recorder);
  EXPECT_EQ(recorder.begins, (Numbers{4}));
  EXPECT_EQ(recorder.positions, (Numbers{0, 1, 2, 3, 4, 4}));
}

TEST(SearchProgress, IsWrittenAboutTwoHundredTimesInALargeSearch) {
  Recorder recorder;
  Search(WholeNameIs(u"nothing"), ConstLibrary(1001), recorder);
  Numbers expected;
  for (int position = 0; position <= 1000; position += 5) expected.push_back(position);
  expected.push_back(1000);
  EXPECT_EQ(recorder.positions, expected);
}

TEST(SearchProgress, NeverGoesBeyondTheMaximum) {
  // Two kinds with two items each: the maximum is 2, the items are 4.
  Library library;
  for (const auto kind : {Kind::kConst, Kind::kType}) {
    library.SetItems(kind, {{u"A", u"B"}, {u"", u""}});
  }
  Recorder recorder;
  Search(WholeNameIs(u"nothing"), library, recorder);
  EXPECT_EQ(recorder.begins, (Numbers{2}));
  EXPECT_EQ(recorder.positions, (Numbers{0, 1, 2}));
}

TEST(SearchCount, IsShownWhenItChangedAndMoreThanFiftyMillisecondsPassed) {
  Recorder slow(51);
  Search(WholeNameIs(u"*"), ConstLibrary(4), slow);
  EXPECT_EQ(slow.counts, (Numbers{0, 1, 2, 3, 4}));

  Recorder at_the_limit(50, 0);
  Search(WholeNameIs(u"*"), ConstLibrary(4), at_the_limit);
  EXPECT_EQ(at_the_limit.counts.front(), 0);
  EXPECT_EQ(at_the_limit.counts.back(), 4);
  EXPECT_EQ(at_the_limit.counts, (Numbers{0, 2, 4})) << "50 are not more than 50";
}

TEST(SearchCount, OfAFastSearchIsShownAtTheStartAndAtTheEnd) {
  Recorder fast(0);
  Search(WholeNameIs(u"*"), ConstLibrary(100), fast);
  EXPECT_EQ(fast.counts, (Numbers{0, 100}));
  Recorder without_hits(0);
  Search(WholeNameIs(u"nothing"), ConstLibrary(100), without_hits);
  EXPECT_EQ(without_hits.counts, (Numbers{0}));
}

TEST(SearchCount, LivesThroughAClockThatWrapsAround) {
  Recorder recorder(60, 0xFFFFFFFFU - 100);
  Search(WholeNameIs(u"*"), ConstLibrary(4), recorder);
  EXPECT_EQ(recorder.counts, (Numbers{0, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace declarium
