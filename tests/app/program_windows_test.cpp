// The main window between the hosts that come and go.
#include "app/program_windows.h"

#include <deque>

#include "app/window_fixture.h"
#include "host/fake_host.h"
#include "host/host_sessions.h"

namespace declarium {
namespace {

class ProgramWindowsTest : public WindowTest {
 protected:
  ProgramWindowsTest() { WriteWinLibrary(); }

  HostConnection& Connect(FakeHostState& host) {
    return sessions_.Connect(std::make_unique<FakeApplication>(host));
  }
  void RunPosted() {
    while (!posted_.empty()) {
      const auto call = std::move(posted_.front());
      posted_.pop_front();
      call();
    }
  }
  void Show(HostConnection& connection) { connection.ShowMainWindow(); }
  // Whether the main window keeps the process alive.
  [[nodiscard]] bool Holds() const { return !hold_.expired(); }
  [[nodiscard]] std::size_t FormCount() const { return toolkit_->Forms().size(); }

  FakeHostState host_;
  FakeHostState other_;
  std::weak_ptr<int> hold_;
  std::deque<std::function<void()>> posted_;
  ProgramWindows::Post post_ = [this](std::function<void()> call) {
    posted_.push_back(std::move(call));
  };
  std::unique_ptr<ProgramWindows> windows_ = std::make_unique<ProgramWindows>(
      *toolkit_, *store_, folder_ / "program",
      [this] {
        auto hold = std::make_shared<int>(0);
        hold_ = hold;
        return hold;
      },
      post_);
  FakeClipboard clipboard_{host_.record};
  HostSessions sessions_{clipboard_, *windows_, post_};
};

TEST_F(ProgramWindowsTest, ConnectingLoadsTheWindowAndHoldsNothing) {
  const auto before = FormCount();
  Connect(host_);
  EXPECT_GT(FormCount(), before);
  EXPECT_FALSE(Holds());
}

TEST_F(ProgramWindowsTest, ShowingHoldsTheProcessUntilTheLastHostIsGone) {
  const auto before = FormCount();
  auto& connection = Connect(host_);
  Show(connection);
  EXPECT_TRUE(Holds());
  sessions_.Disconnect(connection);
  EXPECT_FALSE(Holds());
  EXPECT_EQ(FormCount(), before);
}

TEST_F(ProgramWindowsTest, AnotherHostTakesTheWindowOver) {
  auto& first = Connect(host_);
  auto& second = Connect(other_);
  Show(second);
  const auto forms = FormCount();
  sessions_.Disconnect(second);
  EXPECT_TRUE(Holds());
  EXPECT_EQ(FormCount(), forms);
  Show(first);
  EXPECT_EQ(FormCount(), forms);
}

TEST_F(ProgramWindowsTest, DisconnectedInsideACallTheWindowGoesWhenItsHandlerHasReturned) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Module1"});
  auto& connection = Connect(host_);
  Show(connection);
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry != "CountOfLines") return;
    host_.record.on_enter = nullptr;
    sessions_.Disconnect(connection);
    EXPECT_TRUE(Holds());
  };
  toolkit_->Advance(100);
  EXPECT_TRUE(Holds());
  RunPosted();
  EXPECT_FALSE(Holds());
}

}  // namespace
}  // namespace declarium
