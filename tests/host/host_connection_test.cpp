#include "host/host_connection.h"

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

#include "host/fake_host.h"
#include "host/host_sessions.h"

namespace declarium {
namespace {

using testing::ElementsAre;

class HostConnectionTest : public testing::Test {
 protected:
  HostConnection& Connect() { return *sessions_.Connect(std::make_unique<FakeApplication>(host_)); }
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

TEST_F(HostConnectionTest, FailingStepIsShownWithItsNumberAndEndsTheRoutine) {
  const struct {
    const char* failing;
    int step;
  } cases[] = {
      {"load", 1},
      {"Save", 2},
      {"PutPicture", 3},
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
    ASSERT_GE(entries().size(), 2u);
    EXPECT_EQ(entries()[entries().size() - 2], c.failing);
    EXPECT_EQ(entries().back(),
              "box Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '" +
                  std::to_string(c.step) + "'.");
    sessions_.Disconnect(connection);
  }
}

TEST_F(HostConnectionTest, StepThatThrowsIsShownAsAFailingOne) {
  host_.record.on_enter = [](const std::string& entry) {
    if (entry == "Add-Ins.Add") throw std::bad_alloc();
  };
  Connect();
  EXPECT_EQ(entries().back(),
            "box Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '5'.");
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
      sessions_.Connect(std::make_unique<FakeApplication>(other_));
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
  EXPECT_EQ(host_.record.Count(
                "box Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnDisconnection' na riadku "
                "'1'."),
            1);
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
  HostConnection& second = *sessions_.Connect(std::make_unique<FakeApplication>(other));
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

TEST_F(HostConnectionTest, HostMayDisconnectWhileTheQuestionIsOpen) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"M", .declaration_lines = 2});
  HostConnection& connection = Connect();
  const auto outcome = connection.Insert(
      [&](std::u16string_view) {
        sessions_.Disconnect(connection);
        return true;
      },
      [] { return std::u16string(u"text"); });
  ASSERT_TRUE(outcome.has_value());
  EXPECT_EQ(host_.selected->insertions.size(), 1u);
  RunPosted();
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
