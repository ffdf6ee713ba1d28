#include "host/host_connection.h"

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <set>

#include "host/fake_host.h"
#include "host/host_sessions.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

using testing::ElementsAre;

class HostConnectionTest : public testing::Test {
 protected:
  HostConnection& Connect() { return Connect(host_); }
  HostConnection& Connect(FakeHostState& host) {
    const auto connection = sessions_.Begin(std::make_unique<FakeApplication>(host));
    sessions_.Connect(*connection);
    return *connection;
  }
  // The boxes that were shown, without what follows their first line.
  std::vector<std::string> Boxes() {
    std::vector<std::string> boxes;
    for (const auto& entry : entries()) {
      if (entry.starts_with("box ")) boxes.push_back(entry.substr(4, entry.find('\r') - 4));
    }
    return boxes;
  }
  void RunPosted() {
    while (!posted_.empty()) {
      const auto call = std::move(posted_.front());
      posted_.pop_front();
      call();
    }
  }
  std::vector<std::string>& entries() { return host_.record.entries; }

  FakeHostState host_;
  FakeHostState other_;
  FakeClipboard clipboard_{host_.record};
  FakeWindows windows_{host_.record};
  std::deque<std::function<void()>> posted_;
  HostSessions sessions_{clipboard_, windows_, [this](std::function<void()> call) {
                           posted_.push_back(std::move(call));
                         }};
};

TEST_F(HostConnectionTest, ConnectsStepByStep) {
  Connect();
  EXPECT_THAT(entries(),
              ElementsAre("load", "Save", "PutPicture", "Standard.Add", "Standard.PasteFace",
                          "Standard.Caption Brindlework Declarium 3.0",
                          "Standard.TooltipText Brindlework Declarium 3.0", "Add-Ins.Add",
                          "Add-Ins.PasteFace", "Add-Ins.Caption Declar&ium",
                          "Standard.SubscribeClick", "Add-Ins.SubscribeClick", "Restore",
                          "SubscribeComponents", "ActiveModule", "module changed"));
}

TEST_F(HostConnectionTest, AHostWithControlsOfItsOwnIsOnlyFollowed) {
  const auto connection = sessions_.Begin(std::make_unique<FakeApplication>(host_));
  EXPECT_TRUE(sessions_.ConnectWithoutControls(*connection));
  EXPECT_THAT(entries(),
              ElementsAre("load", "SubscribeComponents", "ActiveModule", "module changed"));
  entries().clear();
  connection->ShowMainWindowLater();
  EXPECT_TRUE(entries().empty());
  RunPosted();
  EXPECT_THAT(entries(), testing::Contains("show"));
  sessions_.Disconnect(*connection);
  EXPECT_TRUE(sessions_.IsEmpty());
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(HostConnectionTest, AHostWithControlsOfItsOwnIsToldThatTheWindowIsNotLoaded) {
  host_.record.failing = "load";
  const auto connection = sessions_.Begin(std::make_unique<FakeApplication>(host_));
  EXPECT_FALSE(sessions_.ConnectWithoutControls(*connection));
  EXPECT_TRUE(sessions_.IsEmpty());
  EXPECT_TRUE(Boxes().empty());
}

std::string ConnectionFailure(int step) {
  return "Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '" +
         std::to_string(step) + "'.";
}

TEST_F(HostConnectionTest, FailingStepIsShownWithItsNumberAndEndsTheRoutine) {
  const struct {
    const char* failing;
    int step;
  } cases[] = {
      {"load", 1},
      {"Standard.Add", 4},
      {"Standard.Caption Brindlework Declarium 3.0", 4},
      {"Standard.TooltipText Brindlework Declarium 3.0", 4},
      {"Add-Ins.Add", 5},
      {"Add-Ins.Caption Declar&ium", 5},
      {"Standard.SubscribeClick", 6},
      {"Add-Ins.SubscribeClick", 6},
      {"Restore", 7},
  };
  for (const auto& c : cases) {
    entries().clear();
    host_.record.failing = c.failing;
    HostConnection& connection = Connect();
    EXPECT_THAT(Boxes(), ElementsAre(ConnectionFailure(c.step)));
    EXPECT_TRUE(entries().back().starts_with("box ")) << c.failing;
    EXPECT_EQ(host_.record.Count("SubscribeComponents"), 0);
    sessions_.Disconnect(connection);
  }
}

TEST_F(HostConnectionTest, FailureNamesItsStepAndTheReason) {
  host_.record.failing = "Add-Ins.Add";
  host_.record.failure = {static_cast<std::int32_t>(0x800A01A8), u"Object required."};
  Connect();
  EXPECT_EQ(entries().back(), "box " + ConnectionFailure(5) +
                                  "\r\n\r\nDo ponuky Add-Ins sa nepridala položka. Object "
                                  "required. (Chyba 800A01A8.)");
}

TEST_F(HostConnectionTest, EveryStepHasANameOfItsOwn) {
  std::set<std::u16string_view> names(texts::kConnectionSteps.begin(),
                                      texts::kConnectionSteps.end());
  EXPECT_EQ(names.size(), 7u);
}

TEST_F(HostConnectionTest, HostThatIsGoneIsToldNothingAndTheClipboardComesBack) {
  for (const std::uint32_t gone :
       {0x80010108U, 0x80010007U, 0x80010012U, 0x800706BAU, 0x800706BEU, 0x800706BFU}) {
    host_.record.failure = {static_cast<std::int32_t>(gone)};
    for (const char* failing : {"Standard.Add", "Add-Ins.Add", "Add-Ins.SubscribeClick"}) {
      entries().clear();
      host_.record.failing = failing;
      HostConnection& connection = Connect();
      EXPECT_THAT(Boxes(), ElementsAre()) << failing;
      EXPECT_EQ(clipboard_.contents, "the user's") << failing;
      sessions_.Abandon(connection);
    }
  }
}

TEST_F(HostConnectionTest, DisconnectingFromAHostThatIsGoneShowsNothingAndUnloads) {
  HostConnection& connection = Connect();
  host_.record.failure = {static_cast<std::int32_t>(0x80010108)};
  host_.record.failing = "Standard.Delete";
  sessions_.Disconnect(connection);
  EXPECT_THAT(Boxes(), ElementsAre());
  EXPECT_EQ(host_.record.Count("unload"), 1);
}

TEST_F(HostConnectionTest, ClipboardThatCannotBeHadLeavesTheControlsWithoutPicture) {
  for (const char* failing : {"Save", "PutPicture"}) {
    entries().clear();
    host_.record.failing = failing;
    Connect();
    EXPECT_THAT(Boxes(), ElementsAre());
    EXPECT_EQ(host_.record.Count("Standard.PasteFace"), 0);
    EXPECT_EQ(host_.record.Count("Add-Ins.PasteFace"), 0);
    EXPECT_EQ(host_.record.Count("Add-Ins.Caption Declar&ium"), 1);
    EXPECT_EQ(host_.record.Count("SubscribeComponents"), 1);
    EXPECT_EQ(clipboard_.contents, "the user's");
  }
}

TEST_F(HostConnectionTest, ClipboardIsRestoredWhenAStepBehindTheControlsFails) {
  for (const char* failing : {"Standard.SubscribeClick", "Add-Ins.SubscribeClick"}) {
    host_.record.failing = failing;
    Connect();
    EXPECT_EQ(clipboard_.contents, "the user's") << failing;
  }
}

TEST_F(HostConnectionTest, StepThatThrowsIsShownAsAFailingOne) {
  host_.record.on_enter = [](const std::string& entry) {
    if (entry == "Add-Ins.Add") throw std::bad_alloc();
  };
  Connect();
  EXPECT_THAT(Boxes(), ElementsAre(ConnectionFailure(5)));
}

TEST_F(HostConnectionTest, ConnectionThatThrowsLeavesNothing) {
  host_.record.on_enter = [](const std::string& entry) {
    if (entry == "ActiveModule") throw std::bad_alloc();
  };
  EXPECT_THROW(Connect(), std::bad_alloc);
  EXPECT_TRUE(sessions_.IsEmpty());
  EXPECT_EQ(host_.record.Count("Standard.Delete"), 1);
  EXPECT_EQ(host_.record.Count("end of component events"), 1);
}

TEST_F(HostConnectionTest, FailureAfterTheFirstControlLeavesTheClipboardWithThePicture) {
  host_.record.failing = "Add-Ins.Add";
  Connect();
  EXPECT_EQ(host_.record.Count("Restore"), 0);
  EXPECT_EQ(clipboard_.contents, "the picture");
  EXPECT_EQ(host_.record.Count("Standard.Delete"), 0);
}

TEST_F(HostConnectionTest, AnotherHostThatConnectsDuringACallKeepsTheUsersClipboard) {
  for (const char* call : {"Standard.Add", "Add-Ins.PasteFace", "Add-Ins.SubscribeClick"}) {
    host_.record.on_enter = [&](const std::string& entry) {
      if (entry != call) return;
      host_.record.on_enter = nullptr;
      Connect(other_);
      EXPECT_EQ(clipboard_.contents, "the picture") << "the face of the first is still to come";
    };
    Connect();
    EXPECT_EQ(clipboard_.contents, "the user's") << call;
  }
}

TEST_F(HostConnectionTest, FaceThatCannotBePastedIsNoFailure) {
  for (const char* failing : {"Standard.PasteFace", "Add-Ins.PasteFace"}) {
    entries().clear();
    host_.record.failing = failing;
    Connect();
    EXPECT_EQ(entries().back(), "module changed");
  }
}

TEST_F(HostConnectionTest, HostThatRefusesComponentEventsIsNoFailure) {
  host_.record.failing = "SubscribeComponents";
  host_.selected = std::make_shared<FakeModule>();
  EXPECT_TRUE(Connect().HasActiveCodeModule());
}

TEST_F(HostConnectionTest, ClickShowsTheMainWindowAfterItsHandlerReturned) {
  Connect();
  for (const char* bar : {"Standard", "Add-Ins"}) {
    const int before = host_.record.Count("show");
    host_.clicks.at(bar)();
    EXPECT_EQ(host_.record.Count("show"), before);
    RunPosted();
    EXPECT_EQ(host_.record.Count("show"), before + 1);
  }
}

TEST_F(HostConnectionTest, ClickThatIsLateForItsConnectionDoesNothing) {
  HostConnection& connection = Connect();
  host_.clicks.at("Standard")();
  sessions_.Disconnect(connection);
  RunPosted();
  EXPECT_EQ(host_.record.Count("show"), 0);
}

TEST_F(HostConnectionTest, DisconnectionRemovesTheControlsThenTheWindows) {
  HostConnection& connection = Connect();
  entries().clear();
  sessions_.Disconnect(connection);
  EXPECT_THAT(entries(), ElementsAre("Add-Ins.Delete", "Standard.Delete", "end of Add-Ins clicks",
                                     "end of Standard clicks", "end of component events", "forget",
                                     "may stay", "unload"));
}

TEST_F(HostConnectionTest, MainWindowInUseKeepsTheProgramsWindows) {
  windows_.may_stay = true;
  sessions_.Disconnect(Connect());
  EXPECT_EQ(host_.record.Count("unload"), 0);
}

TEST_F(HostConnectionTest, ControlThatCannotBeDeletedIsShownAndTheOtherIsDeletedAllTheSame) {
  HostConnection& connection = Connect();
  host_.record.failing = "Add-Ins.Delete";
  sessions_.Disconnect(connection);
  EXPECT_EQ(host_.record.Count("Standard.Delete"), 1);
  EXPECT_EQ(host_.record.Count("end of Standard clicks"), 1);
  EXPECT_THAT(Boxes(), ElementsAre("Vyskytla sa chyba vo funkcii "
                                   "'IDTExtensibility_OnDisconnection' na riadku '1'."));
  EXPECT_EQ(host_.record.Count("unload"), 0);
}

TEST_F(HostConnectionTest, DisconnectingAfterAFailedConnectionRemovesWhatIsThere) {
  host_.record.failing = "Add-Ins.Add";
  HostConnection& connection = Connect();
  host_.record.failing.clear();
  entries().clear();
  sessions_.Disconnect(connection);
  EXPECT_THAT(entries(), ElementsAre("Standard.Delete", "forget", "may stay", "unload"));
}

TEST_F(HostConnectionTest, SecondHostTakesTheMainWindowOver) {
  FakeHostState other;
  HostConnection& first = Connect();
  HostConnection& second = Connect(other);
  sessions_.Disconnect(first);
  EXPECT_EQ(host_.record.Count("handover"), 1);
  EXPECT_EQ(host_.record.Count("unload"), 0);
  sessions_.Disconnect(second);
  EXPECT_EQ(host_.record.Count("forget"), 1);
  EXPECT_EQ(host_.record.Count("unload"), 1);
  EXPECT_TRUE(sessions_.IsEmpty());
}

TEST_F(HostConnectionTest, DeadHostIsNotCalled) {
  HostConnection& connection = Connect();
  entries().clear();
  sessions_.Abandon(connection);
  EXPECT_EQ(host_.record.Count("Standard.Delete"), 0);
  EXPECT_EQ(host_.record.Count("unload"), 1);
}

TEST_F(HostConnectionTest, HostThatDisconnectsDuringTheQuestionGetsItsModuleBackAtOnce) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"M", .declaration_lines = 2});
  const std::weak_ptr<FakeModule> module = host_.selected;
  HostConnection& connection = Connect();
  const auto kept = connection.shared_from_this();
  long references = 0;
  const auto outcome = connection.Insert(
      [&](std::u16string_view) {
        sessions_.Disconnect(connection);
        references = module.use_count();
        return true;
      },
      [] { return std::u16string(u"text"); });
  EXPECT_EQ(references, 1) << "only the host's own";
  ASSERT_TRUE(outcome.has_value());
  EXPECT_EQ(*outcome, Insertion::kDeclined);
  EXPECT_TRUE(host_.selected->insertions.empty());
  EXPECT_FALSE(connection.IsConnected());
  RunPosted();
}

TEST_F(HostConnectionTest, ModuleThatIsSelectedDuringTheQuestionIsNotInsertedInto) {
  const auto asked = std::make_shared<FakeModule>(FakeModule{.name = u"Asked"});
  const auto other = std::make_shared<FakeModule>(FakeModule{.name = u"Other"});
  host_.selected = asked;
  HostConnection& connection = Connect();
  ASSERT_TRUE(connection.Insert(
      [&](std::u16string_view) {
        host_.events.lock()->ComponentSelected(host_.Module(other));
        return true;
      },
      [] { return std::u16string(u"text"); }));
  EXPECT_EQ(asked->insertions.size(), 1u);
  EXPECT_TRUE(other->insertions.empty());
}

TEST_F(HostConnectionTest, QuestionNamesTheProjectWhenSeveralProjectsOrHostsAreOpen) {
  host_.OpenProject({std::make_shared<FakeModule>(FakeModule{.name = u"Module1"})});
  HostConnection& connection = Connect();
  const auto question = [&] {
    std::u16string asked;
    EXPECT_TRUE(connection.Insert(
        [&](std::u16string_view text) {
          asked = text;
          return false;
        },
        [] { return std::u16string(); }));
    return asked;
  };
  EXPECT_EQ(question(), u"Vložiť do 'Module1' ?");
  host_.projects = 2;
  EXPECT_EQ(question(), u"Vložiť do 'Project1.Module1' ?");
  host_.record.failing = "CountOfProjects";
  EXPECT_EQ(question(), u"Vložiť do 'Module1' ?");
  FakeHostState other;
  HostConnection& second = Connect(other);
  EXPECT_EQ(question(), u"Vložiť do 'Project1.Module1' ?");
  sessions_.Disconnect(second);
  EXPECT_EQ(question(), u"Vložiť do 'Module1' ?");
}

TEST_F(HostConnectionTest, PollReadsOnlyTheCountOfLinesAndIgnoresItsFailure) {
  host_.selected = std::make_shared<FakeModule>();
  HostConnection& connection = Connect();
  entries().clear();
  host_.record.failing = "CountOfLines";
  connection.CheckActiveCodeModule();
  EXPECT_THAT(entries(), ElementsAre("CountOfLines"));
}

TEST_F(HostConnectionTest, HostMayDieWhileItIsDisconnected) {
  HostConnection& connection = Connect();
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry == "Add-Ins.Delete") connection.Abandon();
  };
  sessions_.Disconnect(connection);
  EXPECT_EQ(host_.record.Count("Standard.Delete"), 1);
  EXPECT_EQ(host_.record.Count("unload"), 1);
}

}  // namespace
}  // namespace declarium
