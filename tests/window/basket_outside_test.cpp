// The basket and the shared items from outside.
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;

class BasketOutside : public OutsideTest {
 protected:
  BasketOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
  }
  void ShowRecord() {
    ChooseKind(2);
    ClickItem("lstType", 1, u"Type RECT");
  }
  [[nodiscard]] bool ToolbarBecomes(std::string_view key, bool enabled) const {
    return Eventually([&] { return ToolbarEnabled(key) == enabled; });
  }
};

TEST_F(BasketOutside, AddedItemsStandGroupedByKindAndEnableTheCommands) {
  EXPECT_FALSE(ToolbarEnabled("copy"));
  ShowRecord();
  ClickToolbar("add");
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"3 RECT"}));
  ChooseKind(1);
  ClickItem("lstDeclare", 0, u"Declare Sub Beep");
  PressKey(Control("lstDeclare"), VK_RETURN);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"2 Beep", u"3 RECT"}));
  for (const char* key : {"delete", "copy", "export"}) EXPECT_TRUE(ToolbarEnabled(key)) << key;
  EXPECT_FALSE(ToolbarEnabled("insert")) << "no host";
}

TEST_F(BasketOutside, DoubleClickAndEnterAddSharedItems) {
  ShowRecord();
  ASSERT_TRUE(EntriesBecome("lstShare", {u"1 MAX_PATH", u"3 POINTAPI"}));
  DoubleClickEntry(Control("lstShare"), 0);
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH"}));
  ClickEntry(Control("lstShare"), 1);
  EXPECT_TRUE(CodeBecomes(u"Type POINTAPI\r\n\tx As Long\r\n\ty As Long\r\nEnd Type"));
  PressKey(Control("lstShare"), VK_RETURN);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH", u"3 POINTAPI"}));
}

TEST_F(BasketOutside, DeletingShowsTheEntryThatTakesThePlace) {
  ShowRecord();
  DoubleClickEntry(Control("lstShare"), 0);
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH"}));
  ClickToolbar("add");
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH", u"3 RECT"}));
  ClickEntry(Control("lstAdd"), 0);
  ASSERT_TRUE(CodeBecomes(u"Const MAX_PATH = 260"));
  ClickToolbar("delete");
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"3 RECT"}));
  EXPECT_EQ(SelectedEntry(Control("lstAdd")), 0);
  EXPECT_TRUE(CodeBecomes(u"Type RECT\r\n\ta As POINTAPI\r\n\ts As String * MAX_PATH\r\nEnd Type"));
  PressKey(Control("lstAdd"), VK_DELETE);
  EXPECT_TRUE(EntriesBecome("lstAdd", {}));
  EXPECT_TRUE(ToolbarBecomes("copy", false));
}

TEST_F(BasketOutside, CopyPutsTheTextInTheChosenScopeOnTheClipboard) {
  ShowRecord();
  DoubleClickEntry(Control("lstShare"), 0);
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH"}));
  ChooseRow(Control("cmbRange"), 1);
  ClickToolbar("copy");
  EXPECT_TRUE(Eventually([] { return ClipboardText() == u"Public Const MAX_PATH = 260\r\n"; }));
}

TEST_F(BasketOutside, ExportPutsTheTextIntoAModule) {
  Put("m.bas", "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n");
  ShowRecord();
  DoubleClickEntry(Control("lstShare"), 0);
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH"}));
  ClickToolbar("export");
  AnswerFileThatExists("m.bas");
  EXPECT_TRUE(ComesToHold("m.bas",
                          "Attribute VB_Name = \"M\"\r\nPrivate Const MAX_PATH = 260\r\n\r\n"
                          "Option Explicit\r\n"));
}

TEST_F(BasketOutside, TheMenuKeyOpensTheBasketsMenu) {
  ASSERT_TRUE(Eventually([this] { return !Program().FindForm("frmSplash"); }));
  ShowRecord();
  ClickToolbar("add");
  ASSERT_TRUE(EntriesBecome("lstAdd", {u"3 RECT"}));
  ClickEntry(Control("lstAdd"), 0);
  PressKey(Control("lstAdd"), VK_APPS);
  HWND menu = nullptr;
  ASSERT_TRUE(Eventually([&] {
    menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && IsWindowVisible(menu);
  }));
  Type(Main(), u"v");
  EXPECT_TRUE(EntriesBecome("lstAdd", {}));
}

}  // namespace
}  // namespace declarium
