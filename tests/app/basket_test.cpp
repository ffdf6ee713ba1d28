#include "app/window_fixture.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/list_view.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;

class WithWinLibrary : public WindowTest {
 protected:
  WithWinLibrary() {
    WriteWinLibrary();
    Open();
    User().ChooseRow(Form().cmbDatabase, 0);
  }
  void Choose(int kind, int row) {
    User().ChooseRow(Form().cmbSelector, kind);
    ListBox* lists[] = {&Form().lstConst, &Form().lstDeclare, &Form().lstType};
    User().ChooseRow(*lists[kind], row);
  }
  void AddItem(int kind, int row) {
    Choose(kind, row);
    User().ClickToolbar(Form().Toolbar1, "add");
  }
  [[nodiscard]] bool Enabled(const char* key) { return Form().Toolbar1.ButtonEnabled(key); }
};

using Display = WithWinLibrary;
using BasketList = WithWinLibrary;
using SharedList = WithWinLibrary;

TEST_F(Display, ChoosingAConstShowsItsTextAndItsSharedItems) {
  Choose(0, 1);
  EXPECT_EQ(Form().RTB.Text(), u"Const B As Long = A + 1");
  EXPECT_TRUE(Form().RTB.Visible());
  EXPECT_EQ(EntriesOf(Form().lstShare), (Rows{u"1 A"}));
}

TEST_F(Display, ChoosingADeclareShowsItColoredAndListsItsRecords) {
  Choose(1, 2);
  EXPECT_EQ(Form().RTB.Text(),
            u"Declare Function GetWindow Lib \"user32\" (r As RECT, p As POINTAPI) As Long");
  EXPECT_EQ(EntriesOf(Form().lstShare), (Rows{u"3 POINTAPI", u"3 RECT"}));
  const auto runs = Form().RTB.Runs();
  ASSERT_FALSE(runs.empty());
  EXPECT_EQ(runs.front(), (ColoredRun{0xFF0000, u"Declare"}));
}

TEST_F(Display, ChoosingATypeShowsItsMembersAndListsConstsBeforeTypes) {
  Choose(2, 1);
  EXPECT_EQ(Form().RTB.Text(),
            u"Type RECT\r\n\ta As POINTAPI\r\n\ts As String * MAX_PATH\r\nEnd Type");
  EXPECT_EQ(EntriesOf(Form().lstShare), (Rows{u"1 MAX_PATH", u"3 POINTAPI"}));
}

TEST_F(Display, FocusComingToAListShowsItsItemAgain) {
  Choose(0, 1);
  Form().RTB.Clear();
  Form().txtFind.SetFocus();
  Form().lstConst.SetFocus();
  EXPECT_EQ(Form().RTB.Text(), u"Const B As Long = A + 1");
}

TEST_F(Display, ClickingASharedItemShowsItsTextAndKeepsTheList) {
  Choose(2, 1);
  User().ClickEntry(Form().lstShare, 1);
  EXPECT_EQ(Form().RTB.Text(), u"Const MAX_PATH = 260");
  EXPECT_EQ(Form().lstShare.Count(), 2);
}

TEST_F(BasketList, StartsEmptyWithItsCommandsDisabled) {
  for (const char* key : {"delete", "copy", "export", "insert"}) EXPECT_FALSE(Enabled(key)) << key;
  EXPECT_EQ(Form().lstAdd.Count(), 0);
}

TEST_F(BasketList, ItemsStandGroupedByKindWhateverTheOrderOfAdding) {
  AddItem(2, 1);
  AddItem(0, 0);
  AddItem(1, 1);
  AddItem(1, 0);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"1 A", u"2 Beep", u"2 GetTickCount", u"3 RECT"}));
  for (const char* key : {"delete", "copy", "export"}) EXPECT_TRUE(Enabled(key)) << key;
  EXPECT_FALSE(Enabled("insert")) << "no host";
}

TEST_F(BasketList, AddingTwiceChangesNothing) {
  AddItem(2, 1);
  AddItem(2, 1);
  EXPECT_EQ(Form().lstAdd.Count(), 1);
}

TEST_F(BasketList, AddScrollsTheNewEntryIntoView) {
  AddItem(2, 1);
  AddItem(0, 0);
  EXPECT_EQ(dynamic_cast<headless::HeadlessListView&>(Form().lstAdd).LastMadeVisible(), 1);
}

TEST_F(BasketList, AddWithNoSelectedRowAddsNothing) {
  User().ChooseRow(Form().cmbSelector, 0);
  User().ClickToolbar(Form().Toolbar1, "add");
  EXPECT_EQ(Form().lstAdd.Count(), 0);
}

TEST_F(BasketList, ClickingAnEntryShowsItAsItWasWhenAdded) {
  AddItem(0, 1);
  Choose(0, 0);
  User().ClickEntry(Form().lstAdd, 1);
  EXPECT_EQ(Form().RTB.Text(), u"Const B As Long = A + 1");
  EXPECT_EQ(EntriesOf(Form().lstShare), (Rows{u"1 A"}));
}

TEST_F(BasketList, DeleteSelectsAndShowsTheEntryThatTakesThePlace) {
  AddItem(0, 0);
  AddItem(0, 1);
  AddItem(0, 2);
  User().ClickEntry(Form().lstAdd, 2);
  User().ClickToolbar(Form().Toolbar1, "delete");
  EXPECT_EQ(Form().lstAdd.Selected(), 2);
  EXPECT_EQ(Form().RTB.Text(), u"Const MAX_PATH = 260");
  User().PressKey(Form().lstAdd, key::kDelete);
  EXPECT_EQ(Form().lstAdd.Selected(), 1) << "the removed one was the last";
  User().ClickToolbar(Form().Toolbar1, "delete");
  EXPECT_EQ(Form().lstAdd.Count(), 0);
  for (const char* key : {"delete", "copy", "export", "insert"}) EXPECT_FALSE(Enabled(key)) << key;
}

TEST_F(BasketList, DeleteWithoutASelectionDoesNothing) {
  AddItem(0, 0);
  User().ClickToolbar(Form().Toolbar1, "delete");
  EXPECT_EQ(Form().lstAdd.Count(), 1);
}

TEST_F(BasketList, RightClickOnAnEntryNamesItAndItsGroupInTheMenu) {
  AddItem(1, 0);
  User().ClickEntry(Form().lstAdd, 1, MouseButton::kRight);
  EXPECT_EQ(Form().mnuDelOnce.Caption(), u"Odstrániť &položku 'Beep'");
  EXPECT_EQ(Form().mnuDelGroup.Caption(), u"Odstrániť &skupinu 'Declare'");
  EXPECT_TRUE(Form().mnuDelOnce.Enabled());
  EXPECT_TRUE(Form().mnuDelGroup.Enabled());
  EXPECT_EQ(dynamic_cast<headless::HeadlessForm&>(*Form().frmMain).PopupMenusShown(),
            (std::vector<std::string>{"mnuPopupAddList"}));
}

TEST_F(BasketList, RightClickOnEmptySpaceOffersNeitherRemovalAndNoNames) {
  AddItem(1, 0);
  User().ClickEntry(Form().lstAdd, 1, MouseButton::kRight);
  User().ClickEmptySpace(Form().lstAdd, MouseButton::kRight);
  EXPECT_EQ(Form().mnuDelOnce.Caption(), u"Odstrániť &položku");
  EXPECT_EQ(Form().mnuDelGroup.Caption(), u"Odstrániť &skupinu");
  EXPECT_FALSE(Form().mnuDelOnce.Enabled());
  EXPECT_FALSE(Form().mnuDelGroup.Enabled());
}

TEST_F(BasketList, TheMenuKeyAndShiftF10OpenTheMenuOfTheSelectedEntry) {
  auto& frmMain = dynamic_cast<headless::HeadlessForm&>(*Form().frmMain);
  AddItem(0, 0);
  AddItem(1, 0);
  User().ClickEntry(Form().lstAdd, 2);
  frmMain.ChooseInNextPopup("mnuDelOnce");
  User().PressKey(key::kF10, {.shift = true});
  EXPECT_EQ(Form().mnuDelOnce.Caption(), u"Odstrániť &položku 'Beep'");
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"1 A"}));
  User().PressKey(key::kApps);
  EXPECT_EQ(frmMain.PopupMenusShown().size(), 2U);
}

TEST_F(BasketList, PopupRemovesOneEntryOneGroupOrAll) {
  auto& frmMain = dynamic_cast<headless::HeadlessForm&>(*Form().frmMain);
  AddItem(0, 0);
  AddItem(0, 1);
  AddItem(1, 0);
  AddItem(2, 0);
  frmMain.ChooseInNextPopup("mnuDelOnce");
  User().ClickEntry(Form().lstAdd, 2, MouseButton::kRight);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"1 A", u"2 Beep", u"3 POINTAPI"}));
  frmMain.ChooseInNextPopup("mnuDelGroup");
  User().ClickEntry(Form().lstAdd, 1, MouseButton::kRight);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"2 Beep", u"3 POINTAPI"}));
  frmMain.ChooseInNextPopup("mnuDelAll");
  User().ClickEmptySpace(Form().lstAdd, MouseButton::kRight);
  EXPECT_EQ(Form().lstAdd.Count(), 0);
  EXPECT_FALSE(Enabled("copy"));
}

TEST_F(BasketList, CopyReplacesTheClipboardByTheTextInTheChosenScope) {
  toolkit().SetClipboardText(u"old");
  AddItem(0, 0);
  AddItem(2, 0);
  User().ChooseRow(Form().cmbRange, 1);
  User().ClickToolbar(Form().Toolbar1, "copy");
  EXPECT_EQ(toolkit().ClipboardText(),
            u"Public Const A = 1\r\n\r\nPublic Type POINTAPI\r\n\tx As Long\r\n\ty As "
            u"Long\r\nEnd Type\r\n");
}

TEST_F(BasketList, ExportReplacesATextFile) {
  WriteFile("out.TXT", "old content");
  AddItem(0, 0);
  Script().AnswerFile(FileAt("out.TXT").u16string());
  User().ClickToolbar(Form().Toolbar1, "export");
  EXPECT_EQ(ReadFile("out.TXT"), "Private Const A = 1\r\n");
  const auto& asked = std::get<headless::SaveQuestion>(Script().AskedSoFar().back());
  EXPECT_EQ(asked.dialog.filter,
            u"Zdrojové súbory pre Visual Basic|*.frm;*.ctl;*.dob;*.pag;*.bas;*.cls|Textové "
            u"súbory|*.txt");
}

TEST_F(BasketList, ExportPutsTheTextBehindTheAttributeLineOfAModule) {
  WriteFile("m.bas", "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n");
  AddItem(0, 0);
  Script().AnswerFile(FileAt("m.bas").u16string());
  User().ClickToolbar(Form().Toolbar1, "export");
  EXPECT_EQ(ReadFile("m.bas"),
            "Attribute VB_Name = \"M\"\r\nPrivate Const A = 1\r\n\r\nOption Explicit\r\n");
}

TEST_F(BasketList, ExportToANewModuleCreatesIt) {
  AddItem(0, 0);
  Script().AnswerFile(FileAt("new.bas").u16string());
  User().ClickToolbar(Form().Toolbar1, "export");
  EXPECT_EQ(ReadFile("new.bas"), "\r\nPrivate Const A = 1\r\n");
}

TEST_F(BasketList, CancelledOrFailedExportIsSilent) {
  AddItem(0, 0);
  Script().AnswerFile(std::nullopt);
  User().ClickToolbar(Form().Toolbar1, "export");
  Script().AnswerFile((folder_ / "missing" / "x.txt").u16string());
  User().ClickToolbar(Form().Toolbar1, "export");
  EXPECT_TRUE(Messages().empty());
}

TEST_F(SharedList, DoubleClickAddsTheLibrarysItemInItsStoredSpelling) {
  WriteFile("c.api", LibraryContent(u"Case", {{u"Max_Path", u"/260"}}, {},
                                    {{u"T", u"!s As String * MAX_PATH|n As NOWHERE"}}));
  Script().AnswerFile(FileAt("c.api").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuOpen");
  Choose(2, 0);
  User().DoubleClickEntry(Form().lstShare, 1);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"1 Max_Path"}));
  User().DoubleClickEntry(Form().lstShare, 2);
  EXPECT_EQ(Form().lstAdd.Count(), 1) << "the library does not hold it";
}

TEST_F(SharedList, EnterAndDraggingAddToo) {
  Choose(2, 1);
  User().ClickEntry(Form().lstShare, 1);
  User().PressKey(Form().lstShare, key::kEnter);
  User().DragEntry(Form().lstShare, 2, Form().lstAdd);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"1 MAX_PATH", u"3 POINTAPI"}));
}

TEST_F(SharedList, DoubleClickWithNothingSelectedAddsNothing) {
  Choose(2, 1);
  User().DoubleClickEmptySpace(Form().lstShare);
  EXPECT_EQ(Form().lstAdd.Count(), 0);
}

}  // namespace
}  // namespace declarium
