// The target that declarations are written for: shown, copied, exported and inserted.
#include "app/window_fixture.h"
#include "shell/settings.h"
#include "toolkit/captioned.h"
#include "toolkit/headless/dialog_script.h"

namespace declarium {
namespace {

constexpr std::u16string_view kOfVb6 =
    u"Declare Function GetOwner Lib \"user32\" (ByVal hWnd As Long) As Long";
constexpr std::u16string_view kOfVba7 =
    u"Declare PtrSafe Function GetOwner Lib \"user32\" (ByVal hWnd As LongPtr) As LongPtr";

std::u16string WithBoth(std::u16string_view scope) {
  return u"#If VBA7 Then\r\n" + std::u16string(scope).append(kOfVba7) + u"\r\n#Else\r\n" +
         std::u16string(scope).append(kOfVb6) + u"\r\n#End If";
}

class Targets : public WindowTest {
 protected:
  Targets() {
    WriteFile("own.api", LibraryContent(u"Own", {{u"A", u"/1"}},
                                        {{u"GetOwner", u"+\"user32\" (ByVal hWnd As Long) As Long"},
                                         {u"Guess", u"-\"mine\" (ByVal hWnd As Long)"}},
                                        {}));
    WriteFacts();
    options_.host.has_code_module = [] { return true; };
    options_.host.insert = [this](const auto& text) { inserted_ = text(); };
  }

  void WriteFacts() {
    WriteFile("Win32.api", LibraryContent(u"Win32", {}, {}, {}));
    WriteFile("Win32.facts",
              "Declarium facts 1\n"
              "d\tgetowner\twinuser.h\tuser32\t\t\t\t\t||HWND||LongPtr\thWnd|i|HWND||LongPtr\n");
  }
  void OpenOwn() {
    Open();
    ASSERT_TRUE(Form().cmbDatabase.SetText(u"Own"));
    User().ChooseRow(Form().cmbSelector, 1);
    User().ChooseRow(Form().lstDeclare, 0);
  }
  void ChooseTarget(int row, std::string_view button = "Command2") {
    Script().InForm("frmOptions", [this, row, button](declarium::Form& form) {
      User().ChooseRow(form.Get<ComboBox>("cmbTarget"), row);
      User().Click(form.Get<CommandButton>(button));
    });
    User().ClickToolbar(Form().Toolbar1, "settings");
  }
  [[nodiscard]] std::u16string Copied() {
    User().ClickToolbar(Form().Toolbar1, "copy");
    return toolkit().ClipboardText();
  }

  std::u16string inserted_;
};

TEST_F(Targets, OfVb6EverythingIsAsTheLibraryHasIt) {
  OpenOwn();
  User().ClickToolbar(Form().Toolbar1, "add");
  EXPECT_EQ(Form().RTB.Text(), kOfVb6);
  EXPECT_EQ(Form().RTB.ToolTip(), u"");
  EXPECT_EQ(Copied(), u"Private " + std::u16string(kOfVb6) + u"\r\n");
}

TEST_F(Targets, AChosenOneShowsTheItemAtOnceAsItIsInserted) {
  OpenOwn();
  ChooseTarget(1);
  EXPECT_EQ(Form().RTB.Text(), WithBoth(u""));
  EXPECT_EQ(Form().RTB.ToolTip(), u"Zdrojový text pre: VBA 7 aj Visual Basic 6.0");
  ChooseTarget(2);
  EXPECT_EQ(Form().RTB.Text(), kOfVba7);
  ChooseTarget(3);
  EXPECT_EQ(Form().RTB.Text(), kOfVba7);
  EXPECT_EQ(Form().RTB.ToolTip(), u"Zdrojový text pre: twinBASIC");
  ChooseTarget(0);
  EXPECT_EQ(Form().RTB.Text(), kOfVb6);
  EXPECT_EQ(Form().RTB.ToolTip(), u"");
}

TEST_F(Targets, AnEmptyDisplayStaysEmpty) {
  OpenOwn();
  User().ChooseRow(Form().cmbSelector, 0);
  ASSERT_EQ(Form().RTB.Text(), u"");
  ChooseTarget(1);
  EXPECT_EQ(Form().RTB.Text(), u"");
}

TEST_F(Targets, CancelLeavesTheOldOne) {
  OpenOwn();
  ChooseTarget(1, "Command1");
  EXPECT_EQ(Form().RTB.Text(), kOfVb6);
}

TEST_F(Targets, CopyInsertAndExportWriteTheSame) {
  WriteFile("m.bas", "Attribute VB_Name = \"m\"\r\n");
  OpenOwn();
  User().ClickToolbar(Form().Toolbar1, "add");
  ChooseTarget(1);
  const auto text = WithBoth(u"Private ") + u"\r\n";
  EXPECT_EQ(Copied(), text);
  User().ClickToolbar(Form().Toolbar1, "insert");
  EXPECT_EQ(inserted_, text);
  Script().AnswerFile(FileAt("m.bas").u16string());
  User().ClickToolbar(Form().Toolbar1, "export");
  EXPECT_EQ(ReadFile("m.bas"),
            "Attribute VB_Name = \"m\"\r\n" + std::string(text.begin(), text.end()) + "\r\n");
}

TEST_F(Targets, TheWholeLibraryIsExportedForIt) {
  OpenOwn();
  ChooseTarget(2);
  Script().AnswerFile(FileAt("all.bas").u16string());
  User().ChooseMenu(*Form().frmMain, "mnuExport");
  EXPECT_EQ(ReadFile("all.bas"),
            "Const A = 1\r\n" + std::string(kOfVba7.begin(), kOfVba7.end()) +
                "\r\nDeclare PtrSafe Sub Guess Lib \"mine\" (ByVal hWnd As LongPtr) ' check: hWnd "
                "is taken for an address");
}

TEST_F(Targets, TheNextStartHasIt) {
  OpenOwn();
  ChooseTarget(1);
  Reopen();
  User().ChooseRow(Form().lstDeclare, 0);
  EXPECT_EQ(Form().RTB.Text(), WithBoth(u""));
  EXPECT_EQ(Form().RTB.ToolTip(), u"Zdrojový text pre: VBA 7 aj Visual Basic 6.0");
}

TEST_F(Targets, AnInvalidStoredOneIsVb6) {
  WriteSetting(*store_, setting::kTarget, u"vb9");
  OpenOwn();
  EXPECT_EQ(Form().RTB.Text(), kOfVb6);
  EXPECT_EQ(Form().RTB.ToolTip(), u"");
}

TEST_F(Targets, WhatNoFactsKnowIsReadByItsNamesAndMarked) {
  OpenOwn();
  ChooseTarget(2);
  User().ChooseRow(Form().lstDeclare, 1);
  EXPECT_EQ(
      Form().RTB.Text(),
      u"Declare PtrSafe Sub Guess Lib \"mine\" (ByVal hWnd As LongPtr) ' check: hWnd is taken "
      u"for an address");
  const auto runs = Form().RTB.Runs();
  EXPECT_EQ(runs.back(), (ColoredRun{32768, u"' check: hWnd is taken for an address"}));
}

TEST_F(Targets, FactsAreReadWhenATargetNeedsThem) {
  OpenOwn();
  // Facts that come later are found: none were read for Visual Basic 6.0.
  std::filesystem::remove(FileAt("Win32.facts"));
  User().ChooseRow(Form().lstDeclare, 1);
  User().ChooseRow(Form().lstDeclare, 0);
  WriteFacts();
  ChooseTarget(2);
  EXPECT_EQ(Form().RTB.Text(), kOfVba7);
}

TEST_F(Targets, TheFactsBesideTheLibraryCountFirst) {
  WriteFile("own.facts",
            "Declarium facts 1\n"
            "d\tgetowner\tmine.h\tuser32\t\t\t\t\t||DWORD||\thWnd|i|HWND||LongPtr\n");
  OpenOwn();
  ChooseTarget(2);
  EXPECT_EQ(Form().RTB.Text(),
            u"Declare PtrSafe Function GetOwner Lib \"user32\" (ByVal hWnd As LongPtr) As Long");
}

TEST_F(Targets, SharedItemsBasketAndSearchShowItToo) {
  OpenOwn();
  User().ClickToolbar(Form().Toolbar1, "add");
  ChooseTarget(2);
  User().ChooseRow(Form().cmbSelector, 0);
  User().ClickEntry(Form().lstAdd, 1);
  EXPECT_EQ(Form().RTB.Text(), kOfVba7);
}

}  // namespace
}  // namespace declarium
