// The program inside a host that fails, is busy, dies, or disconnects at an awkward moment.
#include <chrono>
#include <future>
#include <set>

#include "addin/addin_fixture.h"

namespace declarium {
namespace {

using window_driver::MessageOf;
using window_driver::PressInDialog;

std::u16string ConnectionFailure(int step) {
  std::u16string text = u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '";
  text += static_cast<char16_t>(u'0' + step);
  return text + u"'.";
}

class AddInFaultsTest : public AddInTest {
 protected:
  // Connects and presses `button` in the box that reports a failure; the failing step, 0 when no
  // box is shown.
  int ConnectAndPress(IdeProcess& ide, int button) {
    auto answer = std::async(std::launch::async, [&] { return ide.Tell("connect " + kAddIn); });
    HWND box = nullptr;
    EXPECT_TRUE(Eventually([&] {
      return (box = Program().FindDialog()) != nullptr ||
             answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }));
    int failing = 0;
    if (box) {
      for (int step = 1; step <= 7; ++step) {
        if (MessageOf(box).starts_with(ConnectionFailure(step))) failing = step;
      }
      EXPECT_NE(failing, 0) << "another box";
      PressInDialog(box, button);
    }
    EXPECT_EQ(answer.get(), "ok");
    return failing;
  }

  void ChangeLibrary() {
    ChooseMenu("mnuRename");
    AnswerText(u"Changed");
    ASSERT_TRUE(CaptionBecomes(u"Changed - Declarium 3.0"));
  }
};

TEST_F(AddInFaultsTest, EveryFailingCallOfTheConnectionShowsItsStepWhateverButtonIsPressed) {
  IdeProcess keeper;
  Connect(keeper);
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ConnectAlso(ide);
  const int calls = static_cast<int>(ide.Ask("calls"));
  ASSERT_GT(calls, 20);
  Disconnect(ide);
  std::set<int> steps;
  for (int call = 1; call <= calls; ++call) {
    ASSERT_EQ(ide.Tell("fail " + std::to_string(call) + " 80004005"), "ok");
    constexpr int kButtons[] = {IDABORT, IDRETRY, IDIGNORE};
    steps.insert(ConnectAndPress(ide, kButtons[call % 3]));
    ASSERT_EQ(ide.Tell("well"), "ok");
    Disconnect(ide);
    EXPECT_EQ(ide.Tell("controls"), "ok ") << "after failing call " << call;
    EXPECT_EQ(ide.Ask("sinks"), 0) << "after failing call " << call;
  }
  EXPECT_EQ(steps, (std::set<int>{0, 4, 5, 6}));
  ConnectAlso(ide);
  ClickButton(ide);
  Disconnect(ide);
  Disconnect(keeper);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, HostThatDiesInsideACallOfTheConnectionIsGivenUpWithoutABox) {
  // The first two calls find the window by which the host is watched.
  for (const int call : {1, 2, 5, 12}) {
    IdeProcess ide;
    ASSERT_EQ(ide.Tell("die-at " + std::to_string(call)), "ok");
    // The process of the last round may be ending.
    EXPECT_TRUE(Eventually([&] { return ide.Tell("connect " + kAddIn) == "dead"; }));
    EXPECT_TRUE(IsGone()) << "died in call " << call;
  }
  IdeProcess healthy;
  EXPECT_TRUE(Eventually([&] { return healthy.Tell("connect " + kAddIn) == "ok"; }));
  AttachToAddIn();
  EXPECT_EQ(Program().FindDialog(), nullptr);
  Disconnect(healthy);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, DyingLyingAndBusyHostsLeaveAHealthyOneUntouched) {
  IdeProcess healthy;
  OpenModule(healthy, "Option Explicit");
  Connect(healthy);
  for (const char* fault : {"die-at 1", "die-at 4", "die-at 9", "die-at 14", "lie Count 2000000000",
                            "lie Count -1", "lie HWnd nothing", "lie Item nothing",
                            "fail-member Advise 80010108", "fail-member Events 800706BA"}) {
    IdeProcess ide;
    OpenModule(ide, "Option Explicit");
    ASSERT_EQ(ide.Tell(fault), "ok");
    ide.Send("connect " + kAddIn);
    // A host that lives and fails is told so; the others see no box.
    const bool box = std::string(fault) == "lie Item nothing";
    if (box) PressInDialog(Program().Dialog(), IDIGNORE);
    const auto answer = ide.Answer();
    EXPECT_EQ(answer, std::string(fault).starts_with("die") ? "dead" : "ok") << fault;
    EXPECT_EQ(Program().FindDialog(), nullptr) << fault;
    if (answer == "ok") {
      ASSERT_EQ(ide.Tell("well"), "ok");
      Disconnect(ide);
    }
  }
  ClickButton(healthy);
  EXPECT_TRUE(IsWindowEnabled(Main()));
  AddConstant();
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(healthy, "Option Explicit\\n" + kConstant));
  Disconnect(healthy);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, EndsWhenTheHostDiesWhileItsModuleIsLookedFor) {
  int calls = 0;
  {
    IdeProcess ide;
    OpenModule(ide, "Option Explicit");
    Connect(ide);
    calls = static_cast<int>(ide.Ask("calls"));
    Disconnect(ide);
    EXPECT_TRUE(Ends());
  }
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell("die-at " + std::to_string(calls - 1)), "ok");
  EXPECT_EQ(ide.Tell("connect " + kAddIn), "dead");
  EXPECT_TRUE(IsGone());
}

TEST_F(AddInFaultsTest, EndsWhenTheHostDiesWithTheMainWindowShown) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  ide.Kill();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, QuestionOfAHostThatDiesGoesAndTheWindowStaysUntilItIsClosed) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  const HWND question = AskToInsert();
  ide.Kill();
  EXPECT_TRUE(Eventually([&] { return !ToolbarEnabled("insert") && !IsWindow(question); }));
  EXPECT_EQ(Program().FindDialog(), nullptr);
  Close();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, WaitsForABusyHost) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  const HWND question = AskToInsert();
  ASSERT_EQ(ide.Tell("busy reject 6"), "ok");
  PressInDialog(question, IDYES);
  EXPECT_TRUE(ModuleBecomes(ide, "Option Explicit\\n" + kConstant));
  EXPECT_EQ(ide.Ask("rejected"), 6);
  Disconnect(ide);
}

TEST_F(AddInFaultsTest, HostThatStaysBusyLeavesTheBasketAndIsTold) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  const HWND question = AskToInsert();
  ASSERT_EQ(ide.Tell("busy reject -1"), "ok");
  PressInDialog(question, IDYES);
  HWND box = nullptr;
  EXPECT_TRUE(Eventually([&] { return (box = Program().FindDialog(question)) != nullptr; }));
  EXPECT_TRUE(MessageOf(box).starts_with(u"Výber sa nevložil do 'Module1'.\r\n"));
  ASSERT_EQ(ide.Tell("well"), "ok");
  PressInDialog(box, IDOK);
  EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit");
  Insert(IDYES);
  EXPECT_TRUE(ModuleBecomes(ide, "Option Explicit\\n" + kConstant));
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, CountOfDeclarationsThatIsNoNumberInsertsNothing) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  for (const char* answer : {"nothing", "many", "2000000000", "-1"}) {
    ASSERT_EQ(ide.Tell("lie CountOfDeclarationLines " + std::string(answer)), "ok");
    const HWND question = AskToInsert();
    PressInDialog(question, IDYES);
    HWND box = nullptr;
    EXPECT_TRUE(Eventually([&] { return (box = Program().FindDialog(question)) != nullptr; }));
    EXPECT_TRUE(MessageOf(box).find(u"kde sa končia deklarácie") != std::u16string::npos);
    PressInDialog(box, IDOK);
    EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit") << answer;
  }
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, ModuleThatWasClosedIsLeftAloneAndTheUserIsTold) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  ASSERT_TRUE(Eventually([this] { return ToolbarEnabled("insert"); }));
  ASSERT_EQ(ide.Tell("vanish Module1"), "ok");
  ClickToolbar("insert");
  const HWND box = Program().Dialog();
  EXPECT_TRUE(MessageOf(box).starts_with(u"Výber sa nevložil.\r\n"));
  PressInDialog(box, IDOK);
  EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit");
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, DisconnectedWhileTheQuestionIsOpenItIsAnsweredNoAndTheWindowStays) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  Connect(ide);
  ClickButton(ide);
  AddConstant();
  const HWND question = AskToInsert();
  Disconnect(ide);
  EXPECT_FALSE(IsWindowVisible(question));
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_TRUE(Eventually([&] { return ide.Ask("objects") == 0; })) << ide.Tell("objects");
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("insert"); }));
  EXPECT_TRUE(IsWindowVisible(Main()));
  EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit");
  Close();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, DisconnectedWhileTheOptionsAreOpenTheWindowStaysUntilItIsClosed) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  ClickToolbar("settings");
  const HWND options = Program().Form("frmOptions");
  Disconnect(ide);
  EXPECT_TRUE(IsWindowVisible(options));
  PostMessageW(options, WM_CLOSE, 0, 0);
  EXPECT_TRUE(Eventually([&] { return IsWindowEnabled(Main()) && !IsWindowVisible(options); }));
  EXPECT_TRUE(IsWindowVisible(Main()));
  Close();
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, EndsWhenItIsDisconnectedWhileAMenuIsOpen) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  const DWORD thread = GetWindowThreadProcessId(Main(), nullptr);
  PostMessageW(Main(), WM_SYSCOMMAND, SC_KEYMENU, 0);
  ASSERT_TRUE(Eventually([&] {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return GetGUIThreadInfo(thread, &state) && (state.flags & GUI_INMENUMODE) != 0;
  }));
  Disconnect(ide);
  EXPECT_TRUE(Ends());
}

TEST_F(AddInFaultsTest, UserWhoCancelsTheClosingKeepsTheProgram) {
  IdeProcess ide;
  Connect(ide);
  ClickButton(ide);
  ChangeLibrary();
  ide.Send("disconnect " + kAddIn);
  PressInDialog(Program().Dialog(), IDCANCEL);
  EXPECT_EQ(ide.Answer(), "ok");
  EXPECT_TRUE(IsWindowVisible(Main()));
  EXPECT_TRUE(CaptionBecomes(u"Changed - Declarium 3.0"));
  Close();
  PressInDialog(Program().Dialog(), IDNO);
  EXPECT_TRUE(Ends());
}

}  // namespace
}  // namespace declarium
