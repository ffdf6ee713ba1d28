// Opening, closing and what the dialog remembers.
#include "search/ui/search_dialog.h"

#include "search/ui/search_dialog_fixture.h"

namespace declarium {
namespace {

TEST_F(SearchDialogTest, OpensBesideTheMainWindow) {
  EXPECT_FALSE(dialog_.IsOpen());
  Open();
  EXPECT_TRUE(dialog_.IsOpen());
  EXPECT_EQ(Find().Caption(), u"Rozšírené vyhľadávanie");
  EXPECT_EQ(Find().Owner(), main_.get());
  EXPECT_FALSE(toolkit_.IsModalOpen());
  user_.Type(main_->Get<TextBox>("txtInput"), u"x");
  EXPECT_EQ(main_->Get<TextBox>("txtInput").Text(), u"x");
}

TEST_F(SearchDialogTest, FirstStartShowsTheDefaultCheckBoxes) {
  Open();
  EXPECT_EQ(Checks(), u"1110111011");
}

TEST_F(SearchDialogTest, StoredCheckBoxesComeBack) {
  stored_ = u"0120120120";
  Open();
  EXPECT_EQ(Checks(), u"0120120120");
}

TEST_F(SearchDialogTest, ADamagedStoredTextHasDefaultsInItsPlaces) {
  stored_ = u"0x3";
  Open();
  EXPECT_EQ(Checks(), u"0110111011");
}

TEST_F(SearchDialogTest, ClosingWithAllBoxesOnStoresTenOnes) {
  Open();
  SetChecks(u"1111111111");
  user_.Click(Get<CommandButton>("Command1"));
  EXPECT_FALSE(dialog_.IsOpen());
  EXPECT_EQ(stored_, u"1111111111");
}

TEST_F(SearchDialogTest, EscapeCloses) {
  Open();
  user_.PressKey(Get<TextBox>("Text3"), key::kEscape);
  EXPECT_FALSE(dialog_.IsOpen());
  EXPECT_EQ(stored_, u"1110111011");
}

TEST_F(SearchDialogTest, TheCloseBoxStoresTheCheckBoxesToo) {
  Open();
  user_.Click(Get<CheckBox>("Check4"));
  user_.Close(Find());
  EXPECT_EQ(stored_, u"1111111011");
}

TEST_F(SearchDialogTest, TheEndOfTheProgramStoresTheCheckBoxesToo) {
  Open();
  user_.Click(Get<CheckBox>("Check1"));
  dialog_.Close();
  EXPECT_EQ(stored_, u"0110111011");
}

TEST_F(SearchDialogTest, ReopeningStartsWithEmptyTextsAndResultsButTheSameCheckBoxes) {
  Open();
  user_.Click(Get<CheckBox>("Check4"));
  for (const auto* box : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6"}) {
    Write(box, u"*");
  }
  PressSearch();
  EXPECT_GT(LV1().Count(), 0);
  user_.Close(Find());
  Open();
  EXPECT_EQ(Checks(), u"1111111011");
  for (const auto* box : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6"}) {
    EXPECT_EQ(Get<TextBox>(box).Text(), u"") << box;
  }
  EXPECT_EQ(LV1().Count(), 0);
  EXPECT_EQ(CountLabel(), u"Nájdených: 0");
}

TEST_F(SearchDialogTest, ShowingTheOpenDialogBringsItForward) {
  Open();
  Write("Text1", u"Get");
  const auto* form = &Find();
  user_.Type(main_->Get<TextBox>("txtInput"), u"x");
  ASSERT_NE(toolkit_.ActiveForm(), form);
  Open();
  EXPECT_EQ(toolkit_.ActiveForm(), form);
  EXPECT_EQ(&Find(), form);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), u"Get");
}

TEST_F(SearchDialogTest, ShowingTheMinimizedDialogRestoresIt) {
  Open();
  Find().SetShowCommand(ShowCommand::kMinimized);
  Open();
  EXPECT_EQ(Find().GetPlacement().show, ShowCommand::kNormal);
}

TEST_F(SearchDialogTest, TheNameHasTheFocusAtFirst) {
  Open();
  EXPECT_TRUE(Get<TextBox>("Text1").HasFocus());
}

TEST_F(SearchDialogTest, TabGoesFromTopToBottom) {
  Open();
  Get<CheckBox>("Check1").SetFocus();
  std::vector<std::string> visited;
  do {
    visited.push_back(toolkit_.FocusedControl()->Name());
    user_.PressKey(key::kTab);
  } while (toolkit_.FocusedControl()->Name() != "Check1");
  EXPECT_THAT(visited,
              ElementsAre("Check1", "Check2", "Check3", "Text1", "Check4", "Text2", "Check5",
                          "Text3", "Check6", "Text4", "Check7", "Check9", "Text6", "Check10",
                          "Text5", "Check8", "Command2", "Command1", "LV1"));
}

TEST_F(SearchDialogTest, ResizingGivesTheSpaceToTheResults) {
  Open();
  const auto before = LV1().Bounds();
  user_.Resize(Find(), {Find().OuterWidth() + 50, Find().OuterHeight() + 90});
  EXPECT_EQ(LV1().Bounds(), (Rect{before.left, before.top, before.width + 50, before.height + 90}));
  EXPECT_LT(LV1().ColumnWidth(), LV1().Bounds().width);
  EXPECT_GT(LV1().ColumnWidth(), LV1().Bounds().width - 40);
}

TEST_F(SearchDialogTest, TheWindowCannotBeMadeSmallerThanItsControls) {
  Open();
  user_.Resize(Find(), {50, 50});
  EXPECT_GE(LV1().Bounds().height, 50);
  EXPECT_LE(LV1().Bounds().top + LV1().Bounds().height, Find().ScaleHeight());
}

}  // namespace
}  // namespace declarium
