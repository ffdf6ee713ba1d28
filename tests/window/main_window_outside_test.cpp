// The main window as a user meets it.
#include "shell/settings.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;

using MainWindowOutside = OutsideTest;

TEST_F(MainWindowOutside, OpensTheLibraryOfTheLastTime) {
  Put("a.api", OtherLibrary());
  Put("b.api", WinLibrary());
  WriteSetting(store_, setting::kLastDatabaseIndex, 1);
  WriteSetting(store_, setting::kLastDatabaseName, u"Win");
  StartAndShow();
  EXPECT_TRUE(CaptionBecomes(u"Win - Declarium 3.0"));
  EXPECT_EQ(ComboRows(Control("cmbDatabase")), (Rows{u"Other", u"Win"}));
  EXPECT_EQ(ChosenRow(Control("cmbDatabase")), 1);
  EXPECT_TRUE(ListBecomes("lstDeclare", {u"Beep", u"GetTickCount", u"GetWindow"}));
}

TEST_F(MainWindowOutside, WithoutALibraryTheCaptionIsTheProgramsAlone) {
  StartAndShow();
  EXPECT_EQ(Caption(), u"Declarium 3.0");
  EXPECT_FALSE(ToolbarEnabled("save"));
}

TEST_F(MainWindowOutside, TypingABeginningSelectsTheItemAndShowsItsCode) {
  Put("win.api", WinLibrary());
  StartAndShow(L"win.api");
  Type(Control("txtInput"), u"getw");
  EXPECT_TRUE(
      CodeBecomes(u"Declare Function GetWindow Lib \"user32\" (r As RECT, p As POINTAPI) As Long"));
  EXPECT_EQ(SelectedRow(Control("lstDeclare")), 2);
  EXPECT_EQ(TextOf(Control("txtInput")), u"getw");
  EXPECT_TRUE(EntriesBecome("lstShare", {u"3 POINTAPI", u"3 RECT"}));
}

TEST_F(MainWindowOutside, ChoosingAKindShowsItsList) {
  Put("win.api", WinLibrary());
  StartAndShow();
  ChooseRow(Control("cmbDatabase"), 0);
  ASSERT_TRUE(CaptionBecomes(u"Win - Declarium 3.0"));
  ChooseKind(0);
  EXPECT_TRUE(Eventually([this] { return IsWindowVisible(Control("lstConst")); }));
  EXPECT_FALSE(IsWindowVisible(Control("lstDeclare")));
  EXPECT_TRUE(ListBecomes("lstConst", {u"A", u"B", u"MAX_PATH"}));
}

TEST_F(MainWindowOutside, TheFindBoxListsHitsThatSelectTheirItem) {
  Put("win.api", WinLibrary());
  StartAndShow(L"win.api");
  SetText(Control("txtFind"), u"*get*");
  PressKey(Control("txtFind"), VK_RETURN);
  ASSERT_TRUE(ListBecomes("lstFind", {u"GetTickCount", u"GetWindow"}));
  ClickRow(Control("lstFind"), 0);
  EXPECT_TRUE(CodeBecomes(u"Declare Function GetTickCount Lib \"kernel32\" () As Long"));
  EXPECT_EQ(SelectedRow(Control("lstDeclare")), 1);
}

TEST_F(MainWindowOutside, TheMenuIsUsedByItsAccessKeys) {
  Put("win.api", WinLibrary());
  StartAndShow(L"win.api");
  ASSERT_TRUE(Eventually([this] { return !Program().FindForm("frmSplash"); }));
  SetForegroundWindow(Main());
  PostMessageW(Main(), WM_SYSCOMMAND, SC_KEYMENU, 'd');
  HWND menu = nullptr;
  ASSERT_TRUE(Eventually([&] {
    menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && IsWindowVisible(menu);
  }));
  Type(Main(), u"p");
  AnswerText(u"Okná");
  EXPECT_TRUE(CaptionBecomes(u"Okná - Declarium 3.0"));
}

}  // namespace
}  // namespace declarium
