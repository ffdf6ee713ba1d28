#include "basket/list_selection.h"

#include <gtest/gtest.h>
#include <initializer_list>

#include "text/text.h"

namespace declarium {
namespace {

Library Windows() {
  Library library;
  library.SetItems(Kind::kConst,
                   {{u"MAX", u"SWP_DRAWFRAME", u"SWP_FRAMECHANGED", u"SWP_NOMOVE", u"XSWP_A"},
                    {u"\x0E"
                     u"260",
                     u"\x0ESWP_FRAMECHANGED", u"\x0E&H20",
                     u"\x0E"
                     u"2",
                     u"\x0E"
                     u"1"}});
  library.SetItems(Kind::kDeclare, {{u"GetRect"}, {u"\n\"l\" (r As RECT, s As Lost)"}});
  library.SetItems(Kind::kType, {{u"Max", u"Rect", u"RECT"},
                                 {u"\x0Cx As Long", u"\x0Cx As Long", u"\x0Cx As String * MAX"}});
  return library;
}

Library Other() {
  Library library;
  library.SetItems(Kind::kConst, {{u"MAX", u"SWP_OWN"},
                                  {u"\x0E"
                                   u"1",
                                   u"\x0E"
                                   u"2"}});
  library.SetItems(Kind::kType, {{u"Lost"}, {u"\x0Cr As RECT"}});
  return library;
}

class SelectingItems : public testing::Test {
 protected:
  ListSelection Select(std::u16string_view text) {
    list_ = *ReadListFile(text);
    return SelectItems(list_, libraries_);
  }

  std::string Names(std::u16string_view text) {
    const auto selection = Select(text);
    EXPECT_TRUE(selection.faults.empty());
    std::string names;
    for (const auto& item : selection.items)
      names += ToUtf8(KindName(item.kind)) + ":" + ToUtf8(item.name) + " ";
    return names;
  }

  LineFault::Kind FaultOf(std::u16string_view text) {
    const auto selection = Select(text);
    EXPECT_EQ(selection.faults.size(), 1U);
    return selection.faults.empty() ? LineFault::Kind() : selection.faults.front().kind;
  }

  Library windows_ = Windows();
  Library other_ = Other();
  std::vector<const Library*> libraries_ = {&windows_};
  ListFile list_;
};

TEST_F(SelectingItems, ANameIsFoundInTheOrderOfKinds) {
  EXPECT_EQ(Names(u"max"), "Const:MAX ");
  EXPECT_EQ(Names(u"type:max"), "Type:Max ");
  EXPECT_EQ(Names(u"Max"), "Type:Max ");  // as it is spelled
}

TEST_F(SelectingItems, APatternIsForTheWholeName) {
  EXPECT_EQ(Names(u"swp_*"), "Const:SWP_DRAWFRAME Const:SWP_FRAMECHANGED Const:SWP_NOMOVE ");
  EXPECT_EQ(Names(u"*SWP_?"), "Const:XSWP_A ");
}

TEST_F(SelectingItems, APatternHasAllKindsUnlessItNamesOne) {
  EXPECT_EQ(Names(u"m*"), "Const:MAX Type:Max ");
  EXPECT_EQ(Names(u"type:m*"), "Type:Max ");
}

TEST_F(SelectingItems, LinesActInTheirOrder) {
  EXPECT_EQ(Names(u"SWP_*\n-SWP_DRAWFRAME"), "Const:SWP_FRAMECHANGED Const:SWP_NOMOVE ");
  EXPECT_EQ(Names(u"SWP_*\n-swp_*\nSWP_NOMOVE"), "Const:SWP_NOMOVE ");
  EXPECT_EQ(Names(u"m*\n-const:max"), "Type:Max ");
}

TEST_F(SelectingItems, TheSameNameCountsOnce) {
  EXPECT_EQ(Names(u"MAX\nmax\nconst:M*\nGetRect"), "Const:MAX Declare:GetRect ");
}

TEST_F(SelectingItems, EarlierLibrariesCountFirst) {
  libraries_ = {&other_, &windows_};
  const auto selection = Select(u"MAX\nGetRect");
  ASSERT_EQ(selection.items.size(), 2U);
  EXPECT_EQ(selection.items[0].item,
            u"\x0E"
            u"1");
  EXPECT_EQ(Names(u"SWP_[ON]*"), "Const:SWP_OWN Const:SWP_NOMOVE ");
}

TEST_F(SelectingItems, WhatCannotBeFoundIsAFaultOfItsLine) {
  EXPECT_EQ(FaultOf(u"GetRct"), LineFault::Kind::kUnknown);
  EXPECT_EQ(FaultOf(u"declare:MAX"), LineFault::Kind::kUnknown);
  EXPECT_EQ(FaultOf(u"SWX_*"), LineFault::Kind::kUnknown);
  EXPECT_EQ(FaultOf(u"rECT"), LineFault::Kind::kSeveralSpellings);
  EXPECT_EQ(FaultOf(u"MAX\n-SWP_NOMOVE"), LineFault::Kind::kTakesNothing);
  EXPECT_EQ(FaultOf(u"MAX\n-SWP_*"), LineFault::Kind::kTakesNothing);
  EXPECT_EQ(FaultOf(u"MAX\n-SWP_NOMVE"), LineFault::Kind::kUnknown);
  EXPECT_EQ(Select(u"MAX\nA\nB").faults.back().line->line, 3U);
}

std::string Missing(const std::vector<MissingNeed>& needs) {
  std::string text;
  for (const auto& need : needs)
    text +=
        ToUtf8(KindName(need.kind)) + ":" + ToUtf8(need.name) + " of " + ToUtf8(need.user) + " ";
  return text;
}

TEST_F(SelectingItems, WhatItemsNeedComesWithThem) {
  Basket basket;
  const auto missing = AddWithNeeds(basket, Select(u"GetRect\nSWP_DRAWFRAME").items, libraries_);
  EXPECT_EQ(basket.Entries(), (GroupedList{{u"MAX", 1},
                                           {u"SWP_DRAWFRAME", 1},
                                           {u"SWP_FRAMECHANGED", 1},
                                           {u"GetRect", 2},
                                           {u"RECT", 3}}));
  EXPECT_EQ(Missing(missing), "Type:Lost of GetRect ");
}

TEST_F(SelectingItems, WhatOneLibraryLacksAnotherMayHave) {
  libraries_ = {&windows_, &other_};
  Basket basket;
  EXPECT_EQ(Missing(AddWithNeeds(basket, Select(u"GetRect").items, libraries_)), "");
  EXPECT_EQ(basket.Entries(),
            (GroupedList{{u"MAX", 1}, {u"GetRect", 2}, {u"Lost", 3}, {u"RECT", 3}}));
}

TEST_F(SelectingItems, WhatIsTakenAwayComesAllTheSameWhereItIsNeeded) {
  Basket basket;
  AddWithNeeds(basket, Select(u"SWP_*\n-SWP_FRAMECHANGED").items, libraries_);
  EXPECT_EQ(basket.Entries().size(), 3U);
}

}  // namespace
}  // namespace declarium
