// Using the results: showing an item, adding it to the basket, and items that are gone.
#include "search/ui/search_dialog_fixture.h"

namespace declarium {
namespace {

using ::testing::Pair;

class SearchResults : public SearchDialogTest {
 protected:
  SearchResults() {
    Open();
    Search("Text1", u"t");  // MAX_PATH, GetWindow, GetWindowRect, GetWindowText, RECT
    searches_and_lookups_ = 0;
  }
};

TEST_F(SearchResults, ClickingShowsTheItemsOfEveryKind) {
  user_.ClickEntry(LV1(), 1);
  EXPECT_THAT(std::exchange(shown_, {}), ElementsAre(u"Const MAX_PATH = 260"));
  user_.ClickEntry(LV1(), 2);
  EXPECT_THAT(std::exchange(shown_, {}),
              ElementsAre(u"Declare Function GetWindow Lib \"user32\" (ByVal hwnd As Long, ByVal "
                          u"wCmd As Long) As Long"));
  user_.ClickEntry(LV1(), 5);
  EXPECT_THAT(std::exchange(shown_, {}),
              ElementsAre(u"Type RECT\r\n\tLeft As Long\r\n\tTop As Long\r\nEnd Type"));
  EXPECT_THAT(added_, IsEmpty());
}

TEST_F(SearchResults, ArrowsShowTheItem) {
  LV1().SetFocus();
  user_.PressKey(key::kDown);
  user_.PressKey(key::kDown);
  ASSERT_EQ(shown_.size(), 2U);
  EXPECT_EQ(shown_[0], u"Const MAX_PATH = 260");
  EXPECT_TRUE(shown_[1].starts_with(u"Declare Function GetWindow "));
}

TEST_F(SearchResults, TheFocusComingToTheListShowsTheSelectedItem) {
  LV1().SetFocus();
  EXPECT_THAT(shown_, IsEmpty());
  user_.ClickEntry(LV1(), 1);
  Get<TextBox>("Text1").SetFocus();
  shown_.clear();
  LV1().SetFocus();
  EXPECT_THAT(shown_, ElementsAre(u"Const MAX_PATH = 260"));
}

TEST_F(SearchResults, ADoubleClickOnARowAddsItsItem) {
  user_.DoubleClickEntry(LV1(), 3);
  user_.DoubleClickEntry(LV1(), 5);
  EXPECT_THAT(added_,
              ElementsAre(Pair(Kind::kDeclare, u"GetWindowRect"), Pair(Kind::kType, u"RECT")));
}

TEST_F(SearchResults, ADoubleClickOnEmptySpaceAddsNothingEvenWithASelectedRow) {
  user_.ClickEntry(LV1(), 3);
  user_.DoubleClickEmptySpace(LV1());
  EXPECT_EQ(LV1().Selected(), 3);
  EXPECT_THAT(added_, IsEmpty());
}

TEST_F(SearchResults, ADoubleClickWithoutASelectedRowAddsNothing) {
  user_.ClickEntry(LV1(), 3);
  LV1().Select(-1);
  LV1().on_double_click.Raise();
  EXPECT_THAT(added_, IsEmpty());
}

TEST_F(SearchResults, EnterAddsTheSelectedItemAndStartsNoSearch) {
  LV1().SetFocus();
  user_.PressKey(key::kDown);
  user_.PressKey(key::kEnter);
  EXPECT_THAT(added_, ElementsAre(Pair(Kind::kConst, u"MAX_PATH")));
  EXPECT_EQ(LV1().Count(), 5);
  EXPECT_EQ(LV1().Selected(), 1);
}

TEST_F(SearchResults, EnterWithoutASelectedRowAddsNothing) {
  user_.PressKey(LV1(), key::kEnter);
  EXPECT_THAT(added_, IsEmpty());
}

TEST_F(SearchResults, EscapeInTheListCloses) {
  user_.PressKey(LV1(), key::kEscape);
  EXPECT_FALSE(dialog_.IsOpen());
}

TEST_F(SearchResults, ClickingAnItemThatWasDeletedShowsNothing) {
  library_.RemoveItem(Kind::kConst, 1);
  user_.ClickEntry(LV1(), 1);
  EXPECT_THAT(shown_, IsEmpty());
  user_.ClickEntry(LV1(), 5);
  EXPECT_EQ(shown_.size(), 1U);
  EXPECT_EQ(LV1().Count(), 5);
}

TEST_F(SearchResults, WithAnotherLibraryItsItemOfThatNameIsShown) {
  library_ = Library();
  AddItem(library_, Kind::kConst, u"max_path", ConstItem(u"Long", u"1024"));
  user_.ClickEntry(LV1(), 1);
  EXPECT_THAT(std::exchange(shown_, {}), ElementsAre(u"Const max_path As Long = 1024"));
  user_.ClickEntry(LV1(), 5);
  EXPECT_THAT(shown_, IsEmpty());
  EXPECT_EQ(LV1().Entry(5).text, u"RECT");
}

TEST_F(SearchResults, AnItemOfAnotherKindWithTheSameNameIsNotShown) {
  library_ = Library();
  AddItem(library_, Kind::kType, u"MAX_PATH", TypeItem({u"x As Long"}));
  user_.ClickEntry(LV1(), 1);
  EXPECT_THAT(shown_, IsEmpty());
}

TEST_F(SearchDialogTest, FiftyThousandHitsAreListedUsedAndFreed) {
  library_ = LargeLibrary(50'000);
  Open();
  Search("Text1", u"V");
  ASSERT_EQ(LV1().Count(), 50'000);
  user_.ClickEntry(LV1(), 50'000);
  EXPECT_THAT(shown_, ElementsAre(u"Const V0049999 As Long = 1"));
  user_.Close(Find());
  toolkit_.ProcessPendingEvents();
  EXPECT_EQ(FindForm("frmWait"), nullptr);
}

}  // namespace
}  // namespace declarium
