// The program inside the stand-in IDE, as a programmer uses it.
#include "addin/addin_fixture.h"

namespace declarium {
namespace {

using window_driver::DrivenProgram;
using window_driver::PressInDialog;

// What the basket with the constant A inserts; its text ends with a line break.
const std::string kConstant = "Private Const A = 1\\n";

TEST_F(AddInTest, ConnectingShowsNothingAndAClickShowsTheMainWindow) {
  IdeProcess ide;
  Connect(ide);
  EXPECT_EQ(Program().FindForm("frmMain"), nullptr);
  ClickButton(ide);
  EXPECT_TRUE(CaptionBecomes(u"Win - Declarium 3.0"));
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, DisconnectingBeforeAnyClickEndsTheProcess) {
  IdeProcess ide;
  Connect(ide);
  Disconnect(ide);
  EXPECT_TRUE(Ends());
  EXPECT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
}

TEST_F(AddInTest, TheSecondClickBringsTheSameWindowForward) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  const HWND window = Main();
  ShowWindowAsync(window, SW_MINIMIZE);
  ASSERT_TRUE(Eventually([&] { return IsIconic(window); }));
  ASSERT_EQ(ide.Tell("click Add-Ins"), "ok");
  EXPECT_TRUE(Eventually([&] { return !IsIconic(window); }));
  AwaitMain();
  EXPECT_EQ(Main(), window);
  Disconnect(ide);
}

TEST_F(AddInTest, ClosingHidesTheWindowAndAClickShowsItAgain) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  const HWND window = Main();
  Close();
  ASSERT_TRUE(Eventually([&] { return !IsWindowVisible(window); }));
  ClickButton(ide);
  EXPECT_EQ(Main(), window);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"1 A"}));
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, InsertsTheBasketAfterTheDeclarations) {
  const struct {
    int type;
    const char* before;
    std::string after;
  } cases[] = {
      {1, "", kConstant},
      {1, "Option Explicit", "Option Explicit\\n" + kConstant},
      {1, "A\\nB\\nC\\nD\\nE\\nSub X()\\nEnd Sub",
       "A\\nB\\nC\\nD\\nE\\n" + kConstant + "\\nSub X()\\nEnd Sub"},
      {1, "Sub X()\\nEnd Sub", kConstant + "\\nSub X()\\nEnd Sub"},
      {2, "Option Explicit\\nSub X()\\nEnd Sub",
       "Option Explicit\\n" + kConstant + "\\nSub X()\\nEnd Sub"},
  };
  for (const auto& c : cases) {
    IdeProcess ide;
    OpenModule(ide, c.before, c.type);
    Connect(ide);
    ClickButton(ide);
    AddConstant();
    Insert(IDYES);
    EXPECT_TRUE(ModuleBecomes(ide, c.after)) << ide.Tell("lines Module1");
    Disconnect(ide);
    EXPECT_TRUE(Ends());
  }
}

TEST_F(AddInTest, AnsweringNoLeavesTheModuleAlone) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  Insert(IDNO);
  EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit");
  Disconnect(ide);
}

TEST_F(AddInTest, InsertIsEnabledWhileThereIsAModuleAndABasket) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  EXPECT_FALSE(ToolbarEnabled("insert"));
  OpenModule(ide, "Option Explicit");
  EXPECT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ASSERT_EQ(ide.Tell("remove Module1"), "ok");
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  Disconnect(ide);
}

TEST_F(AddInTest, DisconnectedWhileTheQuestionIsOpenTheWindowStaysUntilItIsClosed) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  ASSERT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ClickToolbar("insert");
  const HWND question = Program().Dialog();
  Disconnect(ide);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_TRUE(IsWindow(question));
  PressInDialog(question, IDNO);
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit");
  Close();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, EndsWhenTheHostDiesWithTheMainWindowShown) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  ide.Kill();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, EndsWhenTheHostDiesInsideACallOfTheConnection) {
  for (const int call : {5, 12}) {
    IdeProcess ide;
    ASSERT_EQ(ide.Tell("die-at " + std::to_string(call)), "ok");
    EXPECT_EQ(ide.Tell("connect Declarium.Connect"), "dead");
    AttachToAddIn();
    PressInDialog(Program().Dialog(), IDIGNORE);
    EXPECT_TRUE(Ends());
  }
}

TEST_F(AddInTest, StandaloneStartBesideAConnectedOneIsAProcessOfItsOwn) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  {
    const DrivenProgram standalone(FileAt("Declarium.exe"));
    const HWND window = standalone.Form("frmMain");
    EXPECT_NE(window, Main());
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(standalone.WaitForEnd(), 0);
  }
  Insert(IDNO);
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

}  // namespace
}  // namespace declarium
