// The program inside the stand-in IDE, as a programmer uses it.
#include <sstream>

#include "addin/addin_fixture.h"
#include "host/clipboard_text.h"

namespace declarium {
namespace {

using window_driver::DrivenProgram;

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

// Whether a window stands above another one on the screen.
bool IsAbove(HWND upper, HWND lower) {
  for (HWND window = upper; window; window = GetWindow(window, GW_HWNDNEXT)) {
    if (window == lower) return true;
  }
  return false;
}

TEST_F(AddInTest, AClickBringsTheWindowAboveTheIdes) {
  IdeProcess ide;
  Connect(ide);
  const HWND host = FindWindowW(L"StandInIde", nullptr);
  ASSERT_NE(host, nullptr);
  ClickButton(ide);
  EXPECT_TRUE(Eventually([&] { return IsAbove(Main(), host); }));
  // The window manager may still be raising the window that was just shown.
  ASSERT_TRUE(Eventually([&] {
    SetWindowPos(host, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    return IsAbove(host, Main());
  }));
  ASSERT_EQ(ide.Tell("click Standard"), "ok");
  EXPECT_TRUE(Eventually([&] { return IsAbove(Main(), host); }));
  EXPECT_EQ(GetWindow(Main(), GW_OWNER), nullptr);
  Disconnect(ide);
}

TEST_F(AddInTest, FailureOfTheConnectionIsShownAboveTheIde) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell("fail-member Caption 80004005"), "ok");
  ide.Send("connect Declarium.Connect");
  AttachToAddIn();
  const HWND box = Program().Dialog();
  EXPECT_TRUE(IsAbove(box, FindWindowW(L"StandInIde", nullptr)));
  window_driver::PressInDialog(box, IDIGNORE);
  EXPECT_EQ(ide.Answer(), "ok");
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, SecondIdeThatConnectsLeavesTheWindowToTheFirst) {
  IdeProcess first;
  OpenModule(first, "' first");
  Connect(first);
  ClickButton(first);
  AddConstant();
  IdeProcess second;
  OpenModule(second, "' second");
  ASSERT_EQ(second.Tell("connect Declarium.Connect"), "ok");
  Insert(IDYES, u"Project1.Module1");
  EXPECT_TRUE(ModuleBecomes(first, "' first\\n" + kConstant)) << first.Tell("lines Module1");
  EXPECT_EQ(second.Tell("lines Module1"), "ok ' second");
  Disconnect(first);
  ClickButton(second);
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(second, "' second\\n" + kConstant)) << second.Tell("lines Module1");
  Disconnect(second);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, LetsTheSessionEnd) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  const HWND window = Main();
  EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
  EXPECT_TRUE(IsWindowVisible(window)) << "another program may refuse";
  SendMessageW(window, WM_ENDSESSION, FALSE, 0);
  EXPECT_TRUE(IsWindowVisible(window)) << "it did not end after all";
  EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_FALSE(IsWindowVisible(window));
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

// Runs "insert what is missing" and presses the button in its plan.
void AnswerPlan(
    const DrivenProgram& program, const std::string& button,
    const std::function<void()>& before = [] {}) {
  const HWND plan = program.Form("frmPlan");
  before();
  window_driver::PressButton(window_driver::FindControl(plan, button));
  window_driver::WaitFor("the plan's end", [&] { return !program.FindForm("frmPlan"); });
}

TEST_F(AddInTest, InsertsWhatIsMissingOnceAndNothingTheSecondTime) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit\\nSub X()\\nEnd Sub");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  ASSERT_TRUE(Eventually([this] { return ToolbarEnabled("insert-missing"); }));
  ClickToolbar("insert-missing");
  AnswerPlan(Program(), "Command1");
  const std::string after = "Option Explicit\\n\\nPrivate Const A = 1\\n\\nSub X()\\nEnd Sub";
  EXPECT_TRUE(ModuleBecomes(ide, after)) << ide.Tell("lines Module1");
  ClickToolbar("insert-missing");
  AnswerPlan(Program(), "Command2", [this] {
    const HWND plan = Program().Form("frmPlan");
    EXPECT_FALSE(IsWindowEnabled(window_driver::FindControl(plan, "Command1")));
  });
  EXPECT_EQ(ide.Tell("lines Module1"), "ok " + after);
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, AModuleThatChangesWhileThePlanIsShownIsLeftAlone) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  ASSERT_TRUE(Eventually([this] { return ToolbarEnabled("insert-missing"); }));
  ClickToolbar("insert-missing");
  AnswerPlan(Program(), "Command1", [&] { ide.Tell("text Module1 ' somebody's"); });
  AnswerMessage(u"Modul sa medzitým zmenil. Nič sa do neho nevložilo; skúste to znova.", IDOK);
  EXPECT_EQ(ide.Tell("lines Module1"), "ok ' somebody's");
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, CleansTheProjectUpModuleByModule) {
  IdeProcess ide;
  OpenModule(ide,
             "Private Const N = 1\\nPrivate Const OLD = 2\\nSub X()\\n Debug.Print N\\nEnd Sub");
  const std::string code = "Sub Y()\\n Debug.Print N\\nEnd Sub";
  ASSERT_EQ(ide.Tell("component Project1 Module2 1"), "ok");
  ASSERT_EQ(ide.Tell("text Module2 Private Const N = 1\\n" + code), "ok");
  Connect(ide);
  ClickButton(ide);
  ChooseMenu("mnuProject");
  const HWND form = Program().Form("frmProject");
  window_driver::PressButton(window_driver::FindControl(form, "Command1"));
  AnswerMessage(u"Zmeniť modul 'Module1'?\r\n\r\nOdstránené deklarácie: 1\r\nZmenené deklarácie: 1",
                IDYES);
  AnswerMessage(u"Zmeniť modul 'Module2'?\r\n\r\nOdstránené deklarácie: 1", IDYES);
  EXPECT_TRUE(Eventually([&] { return ide.Tell("lines Module2") == "ok " + code; }))
      << ide.Tell("lines Module2");
  EXPECT_EQ(ide.Tell("lines Module1"),
            "ok Public Const N = 1\\nSub X()\\n Debug.Print N\\nEnd Sub");
  window_driver::PressButton(window_driver::FindControl(form, "Command2"));
  window_driver::WaitFor("the window's end", [&] { return !Program().FindForm("frmProject"); });
  Disconnect(ide);
  EXPECT_TRUE(Ends());
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

TEST_F(AddInTest, InsertIsDisabledWhenTheProjectOfTheModuleGoes) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  EXPECT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ASSERT_EQ(ide.Tell("remove-project Project1"), "ok");
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  Disconnect(ide);
}

TEST_F(AddInTest, ConnectingAgainLeavesOneButtonAndOneMenuEntry) {
  IdeProcess keeper;
  Connect(keeper);
  IdeProcess ide;
  ConnectAlso(ide);
  const std::string controls = ide.Tell("controls");
  EXPECT_TRUE(controls.starts_with("ok Standard|Brindlework Declarium 3.0|")) << controls;
  EXPECT_NE(controls.find("Add-Ins|Declar&ium|"), std::string::npos) << controls;
  Disconnect(ide);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  ConnectAlso(ide);
  EXPECT_EQ(ide.Tell("controls"), controls);
  Disconnect(ide);
  Disconnect(keeper);
}

TEST_F(AddInTest, LeavesTheUsersClipboardAsItWas) {
  IdeProcess ide;
  SetClipboardText(u"what the user copied");
  Connect(ide);
  EXPECT_EQ(ide.Tell("controls").find("none"), std::string::npos);
  EXPECT_EQ(ClipboardText(), u"what the user copied");
  Disconnect(ide);
}

TEST_F(AddInTest, ServesTwoHostsAtOnceWithOneWindow) {
  IdeProcess first;
  IdeProcess second;
  OpenModule(first, "' first");
  OpenModule(second, "' second");
  Connect(first);
  ClickButton(first);
  const HWND window = Main();
  AddConstant();
  ConnectAlso(second);
  ClickButton(second);
  EXPECT_EQ(Main(), window);
  Insert(IDYES, u"Project1.Module1");
  EXPECT_TRUE(ModuleBecomes(second, "' second\\n" + kConstant));
  EXPECT_EQ(first.Tell("lines Module1"), "ok ' first");
  // The window passes to the host that is left.
  Disconnect(second);
  EXPECT_TRUE(IsWindowVisible(window));
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(first, "' first\\n" + kConstant));
  Disconnect(first);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInTest, OnlyThePollCallsAnIdleHost) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
  EXPECT_TRUE(Eventually([&] { return ide.Ask("calls") >= 10; }));
  std::istringstream names(ide.Tell("call-names").substr(3));
  for (std::string name; names >> name;) EXPECT_EQ(name, "CodeModule.CountOfLines");
  // Without a module there is nothing to poll.
  ASSERT_EQ(ide.Tell("remove Module1"), "ok");
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
  AddConstant();
  EXPECT_EQ(ide.Tell("call-names"), "ok ");
  Disconnect(ide);
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
