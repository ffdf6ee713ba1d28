// The whole way between the host and the add-in: two processes, real COM, a real clipboard.
#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "host/clipboard_text.h"
#include "host/connection_fixture.h"

namespace declarium {
namespace {

const std::string kCaption = "Brindlework Declarium 3.0";

std::string Box(int step) {
  return "box Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '" +
         std::to_string(step) + "'.";
}

TEST_F(Connection, PlacesOneButtonAndOneMenuEntryWithTheirFaces) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  const std::string controls = ide.Tell("controls");
  EXPECT_TRUE(controls.starts_with("ok Standard|" + kCaption + "|" + kCaption + "|")) << controls;
  EXPECT_NE(controls.find("\\tAdd-Ins|Declar&ium||"), std::string::npos) << controls;
  EXPECT_EQ(controls.find("none"), std::string::npos) << controls;
  EXPECT_EQ(ide.Tell(kDisconnect), "ok");
  EXPECT_EQ(ide.Tell("controls"), "ok ");
}

TEST_F(Connection, LeavesNothingThatTheHostWouldStoreWithItsBars) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_NE(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("stored-controls"), 0);
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, IsInTheUsersListOfAddIns) {
  EXPECT_EQ(IdeProcess().Tell("listed"), "ok Declarium.Probe");
}

TEST_F(Connection, ButtonAndMenuShowOneMainWindow) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ide.Tell("click Standard"), "ok");
  EXPECT_TRUE(log_.Comes("show"));
  EXPECT_EQ(ide.Tell("click Add-Ins"), "ok");
  EXPECT_TRUE(log_.Comes("front"));
  EXPECT_EQ(log_.Count("show"), 1);
  EXPECT_EQ(log_.Count("load"), 1);
  EXPECT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, ConnectingAgainLeavesOneButtonAndOneEntry) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  const std::string first = ide.Tell("controls");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ide.Tell("controls"), first);
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, LeavesTheUsersClipboardAsItWas) {
  IdeProcess ide;
  SetClipboardText(u"what the user copied");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ide.Tell("controls").find("none"), std::string::npos);
  EXPECT_EQ(ClipboardText(), u"what the user copied");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, FailureWhilePlacingControlsLeavesThePictureOnTheClipboard) {
  IdeProcess ide;
  SetClipboardText(u"what the user copied");
  ASSERT_EQ(ide.Tell("fail-member Caption 80004005"), "ok");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ClipboardText(), u"");
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_DIB));
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, LeavesNothingBehindInTheHost) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_GT(ide.Ask("sinks"), 0);
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_TRUE(Eventually([&] { return ide.Ask("objects") == 0; })) << ide.Tell("objects");
}

TEST_F(Connection, InsertsAfterTheDeclarations) {
  const struct {
    const char* before;
    const char* after;
  } cases[] = {
      {"", "ok Private Const A = 5"},
      {"Option Explicit", "ok Option Explicit\\nPrivate Const A = 5"},
      {"A\\nB\\nC\\nD\\nE\\nSub X()\\nEnd Sub",
       "ok A\\nB\\nC\\nD\\nE\\nPrivate Const A = 5\\nSub X()\\nEnd Sub"},
      {"Sub X()\\nEnd Sub", "ok Private Const A = 5\\nSub X()\\nEnd Sub"},
  };
  IdeProcess ide;
  OpenModule(ide, "");
  log_.Set(".text", kText);
  log_.Set(".answer", "yes");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  int insertions = 0;
  for (const auto& c : cases) {
    ASSERT_EQ(ide.Tell(std::string("text Module1 ") + c.before), "ok");
    EXPECT_EQ(ide.Tell("click Standard"), "ok");
    EXPECT_TRUE(log_.Comes("inserted", ++insertions));
    EXPECT_EQ(log_.Count("ask Vložiť do 'Module1' ?"), insertions);
    EXPECT_EQ(ide.Tell("lines Module1"), c.after);
  }
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, AnsweringNoLeavesTheModuleAlone) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  EXPECT_EQ(InsertInto(ide, "no"), "ok Option Explicit");
}

TEST_F(Connection, QuestionNamesTheProjectWhenTwoAreOpen) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell("project Project2"), "ok");
  ASSERT_EQ(ide.Tell("select Module1"), "ok");
  InsertInto(ide, "no");
  EXPECT_EQ(log_.Count("ask Vložiť do 'Project1.Module1' ?"), 1);
}

TEST_F(Connection, KeepsTheCaretInView) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit\\nSub X()\\nEnd Sub");
  ASSERT_EQ(ide.Tell("pane Module1 1 3 3"), "ok");
  InsertInto(ide, "yes");
  EXPECT_EQ(ide.Tell("pane? Module1"), "ok 2 3 4");
}

TEST_F(Connection, FollowsTheActiveCodeModule) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Count("no module"), 1);
  OpenModule(ide, "Option Explicit");
  EXPECT_TRUE(log_.Comes("module"));
  ASSERT_EQ(ide.Tell("component Project1 Resources -1"), "ok");
  const int without = log_.Count("no module");
  ASSERT_EQ(ide.Tell("select Resources"), "ok");
  EXPECT_TRUE(log_.Comes("no module", without + 1));
  ASSERT_EQ(ide.Tell("select Module1"), "ok");
  EXPECT_EQ(log_.Lines().back(), "module");
  ASSERT_EQ(ide.Tell("remove Module1"), "ok");
  EXPECT_EQ(log_.Lines().back(), "no module");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, RemovedNamesakeInAnotherProjectLeavesTheActiveModule) {
  IdeProcess ide;
  OpenModule(ide, "' of the first project");
  ASSERT_EQ(ide.Tell("project Project2"), "ok");
  ASSERT_EQ(ide.Tell("component Project2 Module1 1"), "ok");
  ASSERT_EQ(ide.Tell("select Project2.Module1"), "ok");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("remove Project1.Module1"), "ok");
  EXPECT_EQ(log_.Count("no module"), 0);
  ASSERT_EQ(ide.Tell("remove Project2.Module1"), "ok");
  EXPECT_EQ(log_.Lines().back(), "no module");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, RemovedProjectTakesTheActiveModuleAway) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Lines().back(), "module");
  ASSERT_EQ(ide.Tell("remove-project Project1"), "ok");
  EXPECT_EQ(log_.Lines().back(), "no module");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, SurvivesAModuleThatVanishes) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("vanish Module1"), "ok");
  const auto calls = ide.Ask("calls");
  EXPECT_TRUE(Eventually([&] { return ide.Ask("calls") > calls + 2; }));
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, OnlyThePollCallsAnIdleHost) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
  EXPECT_TRUE(Eventually([&] { return ide.Ask("calls") >= 5; }));
  const std::string names = ide.Tell("call-names") + " ";
  EXPECT_EQ(names.find(' '), 2u);
  for (std::size_t begin = 3; begin < names.size();) {
    const auto end = names.find(' ', begin);
    EXPECT_EQ(names.substr(begin, end - begin), "CodeModule.CountOfLines");
    begin = end + 1;
  }
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

// The step that a call of the host belongs to, by what the host saw up to it.
int StepOf(const std::string& call_names) {
  // Behind the failing call the window is asked for that the box stands in front of.
  const std::string names = call_names.substr(0, call_names.rfind(" VBE.MainWindow"));
  const std::string call = names.substr(names.rfind(' ') + 1);
  if (names.find("VBE.Events") != std::string::npos) return 6;
  const bool second_bar = names.find("CommandBars.Item") != names.rfind("CommandBars.Item");
  const bool names_second_bar = names.ends_with("VBE.CommandBars") &&
                                names.find("VBE.CommandBars") != names.rfind("VBE.CommandBars");
  return second_bar || names_second_bar ? 5 : 4;
}

// For each call of a connection whether its failure is one of the connection's steps. First the
// host is watched, then the steps go from the bars to the clicks, then the active module is
// followed.
std::vector<bool> CallsOfSteps(const std::string& call_names) {
  std::istringstream words(call_names.substr(3));
  std::vector<bool> of_steps;
  bool steps = false;
  int clicks = 0;
  for (std::string name; words >> name;) {
    steps = steps || name == "VBE.CommandBars";
    of_steps.push_back(steps && clicks < 2 && !name.ends_with(".PasteFace"));
    if (name == "CommandBarEvents.Advise") ++clicks;
  }
  return of_steps;
}

TEST_F(Connection, EveryFailingCallIsReportedWithItsStep) {
  // Another host keeps the add-in's process running.
  IdeProcess keeper;
  ASSERT_EQ(keeper.Tell(kConnect), "ok");
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  const auto of_steps = CallsOfSteps(ide.Tell("call-names"));
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  ASSERT_GT(std::ranges::count(of_steps, true), 15);
  ASSERT_GT(std::ranges::count(of_steps, false), 5);
  std::set<int> steps;
  for (std::size_t call = 1; call <= of_steps.size(); ++call) {
    const auto before = log_.Lines().size();
    ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
    ASSERT_EQ(ide.Tell("fail " + std::to_string(call) + " 80004005"), "ok");
    ASSERT_EQ(ide.Tell(kConnect), "ok");
    const std::string names = ide.Tell("call-names");
    ASSERT_EQ(ide.Tell("well"), "ok");
    auto lines = log_.Lines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(before));
    const auto boxes = std::ranges::count_if(
        lines, [](const std::string& line) { return line.starts_with("box "); });
    EXPECT_EQ(boxes, of_steps[call - 1] ? 1 : 0) << names;
    if (of_steps[call - 1]) {
      // Nothing more was asked of the host than up to the failing call.
      const int step = StepOf(names);
      EXPECT_EQ(std::ranges::count(lines, Box(step)), 1) << names;
      steps.insert(step);
    }
    // Disconnecting takes away what was placed, whatever failed.
    EXPECT_EQ(ide.Tell(kDisconnect), "ok");
    EXPECT_EQ(ide.Tell("controls"), "ok ") << names;
    EXPECT_EQ(ide.Ask("sinks"), 0) << names;
  }
  EXPECT_EQ(steps, (std::set<int>{4, 5, 6}));
  ASSERT_EQ(keeper.Tell(kDisconnect), "ok");
}

TEST_F(Connection, EverySubscriptionThatIsRejectedIsMadeAgain) {
  IdeProcess keeper;
  ASSERT_EQ(keeper.Tell(kConnect), "ok");
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  const auto sinks = ide.Ask("sinks");
  std::istringstream words(ide.Tell("call-names").substr(3));
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  int number = 0;
  int subscriptions = 0;
  for (std::string name; words >> name;) {
    ++number;
    if (!name.ends_with(".Advise") && !name.ends_with(".FindConnectionPoint")) continue;
    ++subscriptions;
    ASSERT_EQ(ide.Tell("fail " + std::to_string(number) + " 80010001"), "ok");
    ASSERT_EQ(ide.Tell(kConnect), "ok");
    EXPECT_EQ(ide.Ask("sinks"), sinks) << name;
    ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  }
  EXPECT_EQ(subscriptions, 8);
  EXPECT_EQ(log_.Count(Box(6)), 0);
  ASSERT_EQ(keeper.Tell(kDisconnect), "ok");
}

TEST_F(Connection, CountOfProjectsThatIsALieEndsWithTheFirstThatIsNotThere) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  const auto calls = ide.Ask("calls");
  const auto sinks = ide.Ask("sinks");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  ASSERT_EQ(ide.Tell("lie Count 2000000000"), "ok");
  ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ide.Ask("sinks"), sinks);
  EXPECT_LE(ide.Ask("calls"), calls + 10);
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, MainWindowThatDoesNotLoadIsStepOne) {
  log_.Set(".noload", "");
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Count(Box(1)), 1);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, FaceThatCannotBePastedIsNoFailure) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell("fail-member PasteFace 80004005"), "ok");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(ide.Tell("controls"), "ok Standard|" + kCaption + "|" + kCaption +
                                      "|none|none\\tAdd-Ins|Declar&ium||none|none");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, ControlThatCannotBeDeletedIsReported) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("fail-member Delete 80004005"), "ok");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  EXPECT_EQ(log_.Count("box Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnDisconnection' na "
                       "riadku '1'."),
            1);
  EXPECT_EQ(log_.Count("unload"), 0);
  EXPECT_EQ(ide.Ask("sinks"), 0);
}

TEST_F(Connection, WaitsForABusyHost) {
  for (const char* answer : {"retry", "reject"}) {
    const ProbeLog log;
    IdeProcess ide;
    ASSERT_EQ(ide.Tell(kConnect), "ok");
    OpenModule(ide, "Option Explicit");
    ASSERT_EQ(ide.Tell("busy " + std::string(answer) + " 8"), "ok");
    log.Set(".text", kText);
    log.Set(".answer", "yes");
    ASSERT_EQ(ide.Tell("click Standard"), "ok");
    EXPECT_TRUE(log.Comes("inserted")) << answer;
    EXPECT_EQ(ide.Ask("rejected"), 8);
    EXPECT_EQ(ide.Tell("lines Module1"), "ok Option Explicit\\n" + kText);
    ASSERT_EQ(ide.Tell(kDisconnect), "ok");
    EXPECT_TRUE(log.Comes("end"));
  }
}

TEST_F(Connection, GivesUpOnAHostThatStaysBusy) {
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  ASSERT_EQ(ide.Tell("busy reject -1"), "ok");
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Count(Box(4)), 1);
  ASSERT_EQ(ide.Tell("well"), "ok");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
}

TEST_F(Connection, EndsWhenTheHostDies) {
  {
    IdeProcess ide;
    OpenModule(ide, "Option Explicit");
    ASSERT_EQ(ide.Tell(kConnect), "ok");
    ide.Kill();
  }
  EXPECT_TRUE(log_.Comes("end"));
  EXPECT_EQ(log_.Count("unload"), 1);
}

TEST_F(Connection, EndsWhenTheHostDiesWithTheMainWindowShown) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("click Standard"), "ok");
  ASSERT_TRUE(log_.Comes("show"));
  ide.Kill();
  EXPECT_TRUE(log_.Comes("end"));
}

TEST_F(Connection, WindowInUseStaysWhenTheHostDisconnects) {
  IdeProcess ide;
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  ASSERT_EQ(ide.Tell("click Standard"), "ok");
  ASSERT_TRUE(log_.Comes("show"));
  log_.Set(".stay", "");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(log_.Count("unload"), 0);
  // The process is still there and serves the next connection.
  ASSERT_EQ(ide.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Count("load"), 1);
  std::filesystem::remove(log_.path().string() + ".stay");
  ASSERT_EQ(ide.Tell(kDisconnect), "ok");
  EXPECT_EQ(log_.Count("unload"), 1);
}

TEST_F(Connection, ServesTwoHostsAtOnce) {
  IdeProcess first;
  IdeProcess second;
  OpenModule(first, "' first");
  OpenModule(second, "' second");
  log_.Set(".text", kText);
  log_.Set(".answer", "yes");
  ASSERT_EQ(first.Tell(kConnect), "ok");
  ASSERT_EQ(second.Tell(kConnect), "ok");
  EXPECT_EQ(log_.Count("load"), 1);
  ASSERT_EQ(second.Tell("click Standard"), "ok");
  EXPECT_TRUE(log_.Comes("inserted"));
  EXPECT_EQ(second.Tell("lines Module1"), "ok ' second\\n" + kText);
  EXPECT_EQ(first.Tell("lines Module1"), "ok ' first");
  ASSERT_EQ(second.Tell(kDisconnect), "ok");
  EXPECT_EQ(log_.Count("handover"), 1);
  EXPECT_EQ(log_.Count("unload"), 0);
  ASSERT_EQ(first.Tell("click Add-Ins"), "ok");
  EXPECT_TRUE(log_.Comes("inserted", 2));
  EXPECT_EQ(first.Tell("lines Module1"), "ok ' first\\n" + kText);
  ASSERT_EQ(first.Tell(kDisconnect), "ok");
  EXPECT_EQ(log_.Count("unload"), 1);
}

TEST_F(Connection, OneHostDyingLeavesTheOtherConnected) {
  IdeProcess first;
  IdeProcess second;
  ASSERT_EQ(first.Tell(kConnect), "ok");
  ASSERT_EQ(second.Tell(kConnect), "ok");
  first.Kill();
  EXPECT_TRUE(log_.Comes("handover") || log_.Count("forget") == 1);
  ASSERT_EQ(second.Tell("click Standard"), "ok");
  EXPECT_TRUE(log_.Comes("show"));
  ASSERT_EQ(second.Tell(kDisconnect), "ok");
}

// What the probe reads, or does to what it read, on each click.
class ConnectionReading : public Connection {
 protected:
  ConnectionReading() {
    OpenModule(ide_, "' one\\n' two");
    ide_.Tell("component Project1 Form1 5");
    ide_.Tell("text Form1 ' form");
    ide_.Tell("component Project1 Res1 4");
    ide_.Tell("component Project1 Class1 2");
    log_.Set(".read", "");
    EXPECT_EQ(ide_.Tell(kConnect), "ok");
  }
  void TearDown() override {
    EXPECT_EQ(ide_.Tell(kDisconnect), "ok");
    Connection::TearDown();
  }

  // The last line of the log when the click has been dealt with.
  std::string Click() {
    ide_.Tell("calls reset");
    const int before = static_cast<int>(Answers().size());
    EXPECT_EQ(ide_.Tell("click Standard"), "ok");
    EXPECT_TRUE(Eventually([&] { return static_cast<int>(Answers().size()) > before; }));
    const auto answers = Answers();
    return answers.empty() ? "" : answers.back();
  }
  [[nodiscard]] std::vector<std::string> Answers() const {
    auto lines = log_.Lines();
    std::erase_if(lines, [](const std::string& line) {
      return !line.starts_with("whole") && !line.starts_with("part") && !line.starts_with("edit") &&
             !line.starts_with("no");
    });
    std::erase(lines, "no module");
    return lines;
  }

  IdeProcess ide_;
};

const std::string kWhole = "whole Form1=' form Class1= without 0";

TEST_F(ConnectionReading, ReadsTheActiveModuleAndItsProjectWithSixCallsAModule) {
  EXPECT_EQ(Click(), kWhole);
  EXPECT_EQ(log_.Count("read Module1"), 1);
  // Beside the modules' own: which module is active, and where its project is.
  std::istringstream names(ide_.Tell("call-names").substr(3));
  int calls = 0;
  for (std::string name; names >> name;) {
    if (!name.starts_with("VBE.") && name != "VBComponent.Collection" &&
        !name.starts_with("VBComponents.Parent") && !name.starts_with("VBProject.")) {
      ++calls;
    }
  }
  EXPECT_LE(calls, 1 + 4 * 6 + 1) << ide_.Tell("call-names");
}

TEST_F(ConnectionReading, AFailingCallEndsItOrLeavesOneComponentOut) {
  for (int call = 3; call < 26; call += 5) {
    ASSERT_EQ(ide_.Tell("fail " + std::to_string(call) + " 80004005"), "ok");
    const auto answer = Click();
    EXPECT_TRUE(answer == kWhole || answer == "not read" || answer == "no project" ||
                answer == "no module to read" || answer.starts_with("part") ||
                answer.ends_with("without 1"))
        << call << ": " << answer;
    ASSERT_EQ(ide_.Tell("well"), "ok");
  }
  EXPECT_EQ(Click(), kWhole);
}

TEST_F(ConnectionReading, ABusyIdeIsWaitedFor) {
  ASSERT_EQ(ide_.Tell("busy reject 4"), "ok");
  EXPECT_EQ(Click(), kWhole);
  EXPECT_GE(ide_.Ask("rejected"), 0);
}

TEST_F(ConnectionReading, EditsTheModuleOrLeavesItAsItWas) {
  log_.Set(".edit", "' new");
  EXPECT_EQ(Click(), "edit done");
  EXPECT_EQ(ide_.Tell("lines Module1"), "ok ' new\\n' one\\n' two\\n' new");
  for (const auto* member : {"InsertLines", "CountOfLines", "Lines"}) {
    const auto before = ide_.Tell("lines Module1");
    ASSERT_EQ(ide_.Tell(std::string("fail-member ") + member + " 80004005"), "ok");
    const auto answer = Click();
    EXPECT_TRUE(answer == "edit refused" || answer == "not read") << member << ": " << answer;
    EXPECT_EQ(ide_.Tell("lines Module1"), before) << member;
    ASSERT_EQ(ide_.Tell("well"), "ok");
  }
}

TEST_F(Connection, AnIdeThatDiesWhileItIsReadEndsTheAddIn) {
  log_.Set(".read", "");
  int ends = 0;
  for (const int call : {2, 14}) {
    IdeProcess ide;
    OpenModule(ide, "' one\\n' two");
    ASSERT_EQ(ide.Tell("component Project1 Form1 5"), "ok");
    ASSERT_EQ(ide.Tell(kConnect), "ok");
    ASSERT_EQ(ide.Tell("die-at " + std::to_string(call)), "ok");
    ide.Send("click Standard");
    EXPECT_TRUE(log_.Comes("end", ++ends)) << call;
  }
}

}  // namespace
}  // namespace declarium
