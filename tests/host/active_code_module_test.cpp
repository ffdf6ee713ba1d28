#include "host/active_code_module.h"

#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace declarium {
namespace {

class ActiveCodeModuleTest : public testing::Test {
 protected:
  static std::shared_ptr<FakeModule> Named(std::u16string name) {
    return std::make_shared<FakeModule>(FakeModule{.name = std::move(name)});
  }
  std::u16string ActiveName() const {
    return active_->Module() ? active_->Module()->ComponentName().value_or(u"?") : u"none";
  }

  void Remove(const std::shared_ptr<FakeModule>& module) {
    host_.events.lock()->ComponentRemoved(*host_.Module(module));
  }

  FakeHostState host_;
  int changes_ = 0;
  std::shared_ptr<ActiveCodeModule> active_ = std::make_shared<ActiveCodeModule>(
      std::make_shared<FakeApplication>(host_), [this] { ++changes_; });
};

TEST_F(ActiveCodeModuleTest, StartsWithWhatTheHostHasSelected) {
  host_.selected = Named(u"A");
  active_->Follow();
  EXPECT_EQ(ActiveName(), u"A");
  EXPECT_EQ(changes_, 1);
}

TEST_F(ActiveCodeModuleTest, FollowsTheSelection) {
  active_->Follow();
  EXPECT_EQ(ActiveName(), u"none");
  host_.events.lock()->ComponentSelected(host_.Module(Named(u"B")));
  EXPECT_EQ(ActiveName(), u"B");
  host_.events.lock()->ComponentSelected(nullptr);
  EXPECT_EQ(ActiveName(), u"none");
  EXPECT_EQ(changes_, 3);
}

TEST_F(ActiveCodeModuleTest, RemovedComponentIsNoLongerActive) {
  const auto removed = host_.selected = Named(u"A");
  active_->Follow();
  host_.selected = Named(u"B");
  Remove(removed);
  EXPECT_EQ(ActiveName(), u"B");
}

TEST_F(ActiveCodeModuleTest, RemovedComponentThatIsStillSelectedIsNoLongerActive) {
  host_.selected = Named(u"A");
  active_->Follow();
  Remove(host_.selected);
  EXPECT_EQ(ActiveName(), u"none");
}

TEST_F(ActiveCodeModuleTest, RemovalOfAnotherComponentChangesNothingWhateverItsName) {
  host_.selected = Named(u"A");
  active_->Follow();
  Remove(Named(u"B"));
  Remove(Named(u"A"));
  EXPECT_EQ(ActiveName(), u"A");
  EXPECT_EQ(changes_, 1);
}

TEST_F(ActiveCodeModuleTest, NamesakeOfTheRemovedComponentMayBecomeActive) {
  const auto removed = host_.selected = Named(u"A");
  active_->Follow();
  host_.selected = Named(u"A");
  Remove(removed);
  EXPECT_EQ(ActiveName(), u"A");
  EXPECT_EQ(changes_, 2);
}

TEST_F(ActiveCodeModuleTest, RemovalWhileTheActiveModuleIsGoneAsksTheHost) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.selected->gone = true;
  host_.selected = nullptr;
  Remove(Named(u"B"));
  EXPECT_EQ(ActiveName(), u"none");
}

TEST_F(ActiveCodeModuleTest, FailingHostMeansNone) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.record.failing = "ActiveModule";
  host_.events.lock()->SelectionMayHaveChanged();
  EXPECT_EQ(ActiveName(), u"none");
}

TEST_F(ActiveCodeModuleTest, StoppedItStaysWithoutModule) {
  host_.selected = Named(u"A");
  active_->Follow();
  active_->Stop();
  active_->Refresh();
  EXPECT_EQ(ActiveName(), u"none");
  EXPECT_EQ(changes_, 1);
}

TEST_F(ActiveCodeModuleTest, SlowHostIsNotPolledInsideAPoll) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.record.on_enter = [this](const std::string& entry) {
    if (entry == "CountOfLines") active_->Check();
  };
  active_->Check();
  EXPECT_EQ(host_.record.Count("CountOfLines"), 1);
  active_->Check();
  EXPECT_EQ(host_.record.Count("CountOfLines"), 2);
}

TEST_F(ActiveCodeModuleTest, AHostWithoutEventsIsAskedOnceItsSelectionHasMoved) {
  active_->Follow();
  host_.selected = Named(u"A");
  active_->Check();
  EXPECT_EQ(ActiveName(), u"none");
  host_.selection_moved = true;
  active_->Check();
  EXPECT_EQ(ActiveName(), u"A");
  EXPECT_EQ(host_.record.Count("CountOfLines"), 0);
  active_->Check();
  EXPECT_EQ(host_.record.Count("CountOfLines"), 1);
}

TEST_F(ActiveCodeModuleTest, SelectionReportedWhileTheHostIsAskedCounts) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.record.on_enter = [this](const std::string& entry) {
    if (entry != "ActiveModule") return;
    host_.record.on_enter = nullptr;
    host_.events.lock()->ComponentSelected(host_.Module(Named(u"B")));
  };
  active_->Refresh();
  EXPECT_EQ(ActiveName(), u"B");
}

TEST_F(ActiveCodeModuleTest, StoppedWhileTheHostAnswersItStaysWithoutModule) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.record.on_enter = [this](const std::string& entry) {
    if (entry == "ActiveModule") active_->Stop();
  };
  active_->Refresh();
  EXPECT_EQ(ActiveName(), u"none");
  EXPECT_EQ(changes_, 1);
}

TEST_F(ActiveCodeModuleTest, StoppedWhileARemovalIsHandledItStaysWithoutModule) {
  host_.selected = Named(u"A");
  active_->Follow();
  host_.selected->on_asked = [this] {
    active_->Stop();
    active_.reset();
  };
  Remove(host_.selected);
  EXPECT_EQ(active_, nullptr);
  EXPECT_EQ(changes_, 1);
  EXPECT_TRUE(host_.events.expired());
}

TEST_F(ActiveCodeModuleTest, StoppedWhileItFollowsItKeepsNoSubscription) {
  host_.record.on_enter = [this](const std::string& entry) {
    if (entry == "SubscribeComponents") active_->Stop();
  };
  active_->Follow();
  EXPECT_EQ(host_.record.Count("end of component events"), 1);
  EXPECT_EQ(changes_, 0);
}

}  // namespace
}  // namespace declarium
