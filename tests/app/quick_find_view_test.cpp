#include "app/window_fixture.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;

class QuickFind : public WindowTest {
 protected:
  QuickFind() {
    WriteWinLibrary();
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
    User().ChooseRow(Form().cmbSelector, 1);
  }
  void Find(std::u16string_view text) {
    Form().txtFind.SetText(u"");
    User().Type(Form().txtFind, text);
    User().PressKey(Form().txtFind, key::kEnter);
  }
};

TEST_F(QuickFind, EnterListsTheNamesThatContainThePatternInStoredCase) {
  Find(u"GET");
  EXPECT_EQ(RowsOf(Form().lstFind), (Rows{u"GetTickCount", u"GetWindow"}));
  Find(u"g?t*w");
  EXPECT_EQ(RowsOf(Form().lstFind), (Rows{u"GetWindow"}));
}

TEST_F(QuickFind, EnterOnAnEmptyBoxKeepsTheOldHits) {
  Find(u"get");
  Form().txtFind.SetText(u"");
  User().PressKey(Form().txtFind, key::kEnter);
  EXPECT_EQ(Form().lstFind.RowCount(), 2);
}

TEST_F(QuickFind, NoHitAndAMalformedPatternLeaveTheListEmpty) {
  Find(u"get");
  Find(u"zzz");
  EXPECT_EQ(Form().lstFind.RowCount(), 0);
  Find(u"get");
  Find(u"[");
  EXPECT_EQ(Form().lstFind.RowCount(), 0);
}

TEST_F(QuickFind, ChoosingAHitSelectsAndShowsTheItem) {
  Find(u"get");
  User().ChooseRow(Form().lstFind, 1);
  EXPECT_EQ(Form().lstDeclare.Text(), u"GetWindow");
  EXPECT_TRUE(Form().RTB.Text().starts_with(u"Declare Function GetWindow"));
  EXPECT_EQ(Form().txtInput.Text(), u"GetWindow");
}

TEST_F(QuickFind, AHitOfAnotherKindTakesTheSelectionAway) {
  Find(u"get");
  User().ChooseRow(Form().cmbSelector, 0);
  User().ChooseRow(Form().lstConst, 0);
  Form().lstFind.AddRow(u"GetWindow");
  User().ChooseRow(Form().lstFind, 0);
  EXPECT_EQ(Form().lstConst.ListIndex(), -1);
}

TEST_F(QuickFind, FocusComingToTheHitsActsAsAClick) {
  Find(u"get");
  User().ChooseRow(Form().lstFind, 1);
  User().ChooseRow(Form().lstDeclare, 0);
  Form().lstFind.SetFocus();
  EXPECT_EQ(Form().lstDeclare.Text(), u"GetWindow");
}

TEST_F(QuickFind, DoubleClickAndEnterOnAHitAddItToTheBasket) {
  Find(u"get");
  User().DoubleClickRow(Form().lstFind, 0);
  User().ChooseRow(Form().lstFind, 1);
  User().PressKey(Form().lstFind, key::kEnter);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"2 GetTickCount", u"2 GetWindow"}));
}

TEST_F(QuickFind, TypingSelectsTheFirstNameWithThatBeginningAndKeepsTheTypedText) {
  User().Type(Form().txtInput, u"get");
  EXPECT_EQ(Form().lstDeclare.Text(), u"GetTickCount");
  EXPECT_EQ(Form().txtInput.Text(), u"get");
  User().Type(Form().txtInput, u"w");
  EXPECT_EQ(Form().lstDeclare.Text(), u"GetWindow");
}

TEST_F(QuickFind, ABeginningThatNoNameHasKeepsTheSelection) {
  User().Type(Form().txtInput, u"b");
  User().Type(Form().txtInput, u"zz");
  EXPECT_EQ(Form().lstDeclare.Text(), u"Beep");
}

TEST_F(QuickFind, ClearingTheBoxClearsTheSelection) {
  User().Type(Form().txtInput, u"b");
  Form().txtInput.SetText(u"");
  EXPECT_EQ(Form().lstDeclare.ListIndex(), -1);
}

TEST_F(QuickFind, ArrowsMoveTheSelectionWithoutChangingTheBoxAndStopAtTheEnds) {
  User().Type(Form().txtInput, u"b");
  User().PressKey(Form().txtInput, key::kUp);
  EXPECT_EQ(Form().lstDeclare.ListIndex(), 0);
  for (int i = 0; i < 5; ++i) User().PressKey(Form().txtInput, key::kDown);
  EXPECT_EQ(Form().lstDeclare.ListIndex(), 2);
  EXPECT_EQ(Form().txtInput.Text(), u"b");
  User().PressKey(Form().txtInput, key::kUp);
  EXPECT_EQ(Form().lstDeclare.ListIndex(), 1);
}

TEST_F(QuickFind, EnterInTheBoxAddsTheSelectedItem) {
  User().PressKey(Form().txtInput, key::kEnter);
  EXPECT_EQ(Form().lstAdd.Count(), 0) << "nothing is selected";
  User().Type(Form().txtInput, u"getw");
  User().PressKey(Form().txtInput, key::kEnter);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"2 GetWindow"}));
}

TEST_F(QuickFind, ClickingARowCopiesItsNameIntoTheBox) {
  User().ChooseRow(Form().lstDeclare, 2);
  EXPECT_EQ(Form().txtInput.Text(), u"GetWindow");
  EXPECT_EQ(Form().lstDeclare.ListIndex(), 2);
}

TEST_F(QuickFind, TypingALetterInTheListStartsANewTextWithItAlone) {
  User().Type(Form().txtInput, u"getw");
  User().TypeCharacter(Form().lstDeclare, u'b');
  EXPECT_EQ(Form().txtInput.Text(), u"b");
  EXPECT_TRUE(Form().txtInput.HasFocus());
  EXPECT_EQ(Form().txtInput.SelectionStart(), 1);
  EXPECT_EQ(Form().lstDeclare.Text(), u"Beep");
}

TEST_F(QuickFind, EnterAndDoubleClickInTheListAddTheItem) {
  User().ChooseRow(Form().lstDeclare, 0);
  User().PressKey(Form().lstDeclare, key::kEnter);
  User().DoubleClickRow(Form().lstDeclare, 1);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"2 Beep", u"2 GetTickCount"}));
}

TEST_F(QuickFind, TypeAheadInAnEmptyListSelectsNothing) {
  WriteFile("e.api", "Empty\x02\x02");
  Script().AnswerFile(FileAt("e.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  User().Type(Form().txtInput, u"get");
  EXPECT_EQ(Form().lstDeclare.ListIndex(), -1);
}

TEST_F(QuickFind, BoxesDoNothingBeforeALibraryIsOpen) {
  window_.reset();
  store_.emplace(folder_ / "none");
  Open();
  User().Type(Form().txtInput, u"get");
  User().PressKey(Form().txtInput, key::kDown);
  User().PressKey(Form().txtInput, key::kEnter);
  EXPECT_EQ(Form().lstAdd.Count(), 0);
  EXPECT_EQ(Form().lstDeclare.ListIndex(), -1);
  User().TypeCharacter(Form().lstDeclare, u'g');
  EXPECT_EQ(Form().txtInput.Text(), u"get") << "a character typed into the list stays there";
}

}  // namespace
}  // namespace declarium
