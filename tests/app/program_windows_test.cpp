// The main window between the hosts that come and go.
#include "app/program_windows.h"

#include <deque>
#include <stdexcept>

#include "app/window_fixture.h"
#include "host/fake_host.h"
#include "host/host_sessions.h"
#include "shell/settings.h"
#include "toolkit/headless/form.h"

namespace declarium {
namespace {

class ProgramWindowsTest : public WindowTest {
 protected:
  ProgramWindowsTest() { WriteWinLibrary(); }

  HostConnection& Connect(FakeHostState& host) {
    const auto connection = sessions_.Begin(std::make_unique<FakeApplication>(host));
    sessions_.Connect(*connection);
    return *connection;
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
  [[nodiscard]] headless::HeadlessForm& Main() const {
    for (auto* form : toolkit_->Forms()) {
      if (form->Name() == "frmMain") return *form;
    }
    throw std::logic_error("no main window");
  }
  void PutIntoBasket() {
    User().ChooseRow(Main().Get<ComboBox>("cmbDatabase"), 0);
    User().ChooseRow(Main().Get<ComboBox>("cmbSelector"), 0);
    User().ChooseRow(Main().Get<ListBox>("lstConst"), 0);
    User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "add");
  }
  void ChangeLibrary() {
    User().ChooseRow(Main().Get<ComboBox>("cmbDatabase"), 0);
    Script().AnswerText(u"Changed");
    User().ChooseMenu(Main(), "mnuRename");
  }

  FakeHostState host_;
  FakeHostState other_;
  std::weak_ptr<int> hold_;
  std::deque<std::function<void()>> posted_;
  std::unique_ptr<ProgramWindows> windows_ =
      std::make_unique<ProgramWindows>(*toolkit_, *store_, folder_ / "program", [this] {
        auto hold = std::make_shared<int>(0);
        hold_ = hold;
        return hold;
      });
  FakeClipboard clipboard_{host_.record};
  HostSessions sessions_{clipboard_, *windows_, [this](std::function<void()> call) {
                           posted_.push_back(std::move(call));
                         }};
};

TEST_F(ProgramWindowsTest, DeclarationsAreWrittenForTheHostUnlessTheUserChose) {
  other_.target = vb::Audience::kVba7;
  HostConnection& ide = Connect(host_);
  HostConnection& editor = Connect(other_);
  const auto told = [this] { return Main().Get<RichText>("RTB").ToolTip(); };
  Show(ide);
  EXPECT_EQ(told(), u"");
  Show(editor);
  EXPECT_EQ(told(), u"Zdrojový text pre: VBA 7 aj Visual Basic 6.0");
  Show(ide);
  EXPECT_EQ(told(), u"");
  WriteAudience(*store_, vb::Audience::kVb6);
  Show(editor);
  EXPECT_EQ(told(), u"");
}

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
  EXPECT_TRUE(Main().IsUnloaded());
  toolkit_->Advance(0);
  EXPECT_EQ(FormCount(), before);
}

TEST_F(ProgramWindowsTest, HidingTheWindowReleasesItsHoldAndKeepsItLoaded) {
  auto& connection = Connect(host_);
  Show(connection);
  auto& window = Main();
  User().Close(window);
  EXPECT_FALSE(Holds());
  EXPECT_FALSE(window.Visible());
  EXPECT_TRUE(window.IsLoaded());
  Show(connection);
  EXPECT_TRUE(Holds());
  EXPECT_EQ(&Main(), &window);
  EXPECT_TRUE(window.Visible());
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

TEST_F(ProgramWindowsTest, DisconnectedWhileADialogIsOpenTheWindowStaysUntilItIsClosed) {
  auto& connection = Connect(host_);
  Show(connection);
  EXPECT_FALSE(windows_->MayStay());
  Script().InForm("frmOptions", [&](declarium::Form& dialog) {
    EXPECT_TRUE(windows_->MayStay());
    sessions_.Disconnect(connection);
    EXPECT_TRUE(Main().Visible());
    dialog.Unload();
  });
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "settings");
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
  User().Close(Main());
  EXPECT_FALSE(Holds());
}

TEST_F(ProgramWindowsTest, DisconnectedInsideACallTheWindowLivesUntilItsHandlerHasReturned) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Module1"});
  auto& connection = Connect(host_);
  Show(connection);
  const auto forms = FormCount();
  std::size_t inside = 0;
  host_.record.on_enter = [&](const std::string& entry) {
    if (entry != "CountOfLines") return;
    host_.record.on_enter = nullptr;
    sessions_.Disconnect(connection);
    inside = FormCount();
  };
  toolkit_->Advance(100);
  EXPECT_EQ(inside, forms);
  EXPECT_LT(FormCount(), forms);
  EXPECT_FALSE(Holds());
}

TEST_F(ProgramWindowsTest, DisconnectedWhileAHandlerProcessesEventsTheWindowLivesUntilItReturns) {
  auto& connection = Connect(host_);
  Show(connection);
  auto& kinds = Main().Get<ComboBox>("cmbSelector");
  const auto forms = FormCount();
  // Choosing a kind processes events before it fills the list.
  bool disconnected = false;
  toolkit_->Post([&] {
    sessions_.Disconnect(connection);
    disconnected = true;
  });
  User().ChooseRow(kinds, 1);
  ASSERT_TRUE(disconnected);
  EXPECT_EQ(FormCount(), forms);
  EXPECT_TRUE(Main().IsUnloaded());
  EXPECT_FALSE(Holds());
  toolkit_->Advance(0);
  EXPECT_LT(FormCount(), forms);
}

TEST_F(ProgramWindowsTest, UserWhoCancelsTheUnloadingKeepsTheWindowAndTheProcess) {
  auto& connection = Connect(host_);
  Show(connection);
  ChangeLibrary();
  Script().AnswerMessage(Answer::kCancel);
  sessions_.Disconnect(connection);
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
  // Another connection finds it, changed as it is.
  auto& next = Connect(other_);
  Show(next);
  Script().AnswerMessage(Answer::kNo);
  sessions_.Disconnect(next);
  EXPECT_FALSE(Holds());
}

TEST_F(ProgramWindowsTest, HiddenWindowWhoseUnloadingIsCancelledComesBack) {
  auto& connection = Connect(host_);
  Show(connection);
  ChangeLibrary();
  Script().AnswerMessage(Answer::kNo);
  User().Close(Main());
  ASSERT_FALSE(Main().Visible());
  Script().AnswerMessage(Answer::kCancel);
  sessions_.Disconnect(connection);
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
}

TEST_F(ProgramWindowsTest, HostThatComesWhileTheUnloadingAsksIsServedByANewWindow) {
  auto& connection = Connect(host_);
  Show(connection);
  ChangeLibrary();
  HostConnection* next = nullptr;
  Script().AnswerMessage(Answer::kNo, [&] { next = &Connect(other_); });
  sessions_.Disconnect(connection);
  EXPECT_FALSE(Holds());
  toolkit_->Advance(0);
  Show(*next);
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
}

TEST_F(ProgramWindowsTest, EveryShowingBringsTheWindowAboveThoseOfTheHost) {
  auto& connection = Connect(host_);
  EXPECT_EQ(Main().TimesBroughtToTop(), 0);
  Show(connection);
  EXPECT_EQ(Main().TimesBroughtToTop(), 1);
  Show(connection);
  EXPECT_EQ(Main().TimesBroughtToTop(), 2);
}

TEST_F(ProgramWindowsTest, ConnectingAnotherHostLeavesTheShownWindowToTheFirst) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"First"});
  other_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Second"});
  Show(Connect(host_));
  auto& second = Connect(other_);
  PutIntoBasket();
  Script().AnswerMessage(Answer::kYes);
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_EQ(host_.selected->insertions.size(), 1u);
  EXPECT_TRUE(other_.selected->insertions.empty());
  // The second host's own click takes it.
  Show(second);
  Script().AnswerMessage(Answer::kYes);
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_EQ(host_.selected->insertions.size(), 1u);
  EXPECT_EQ(other_.selected->insertions.size(), 1u);
}

TEST_F(ProgramWindowsTest, RefusedInsertionIsToldAndTheBasketStays) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Module1"});
  Show(Connect(host_));
  PutIntoBasket();
  const auto basket = Main().Get<ListView>("lstAdd").Count();
  for (const char* failing : {"CountOfDeclarationLines", "InsertLines"}) {
    host_.record.failing = failing;
    Script().AnswerMessage(Answer::kYes);
    Script().AnswerMessage(Answer::kOk);
    User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
    EXPECT_EQ(Script().LastMessage().icon, MessageIcon::kCritical);
    const auto messages = Messages();
    ASSERT_EQ(messages.size(), 2u) << failing;
    EXPECT_TRUE(messages[1].starts_with(u"Výber sa nevložil do 'Module1'.\r\n"));
    EXPECT_EQ(Main().Get<ListView>("lstAdd").Count(), basket);
  }
  host_.record.failing.clear();
  Script().AnswerMessage(Answer::kYes);
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_EQ(host_.selected->insertions.size(), 1u);
}

TEST_F(ProgramWindowsTest, QuestionOfAHostThatDisconnectsIsAnsweredNo) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Module1"});
  auto& connection = Connect(host_);
  Show(connection);
  PutIntoBasket();
  const std::weak_ptr<FakeModule> module = host_.selected;
  long references = 0;
  Script().AnswerMessage(Answer::kYes, [&] {
    sessions_.Disconnect(connection);
    references = module.use_count();
  });
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_EQ(references, 1) << "only the host's own";
  EXPECT_TRUE(host_.selected->insertions.empty());
  EXPECT_EQ(Messages().size(), 1u);
  EXPECT_TRUE(Main().Visible()) << "the basket in it is still of use";
}

TEST_F(ProgramWindowsTest, QuestionOfADeadHostClosesAndLeavesTheOtherHostsAlone) {
  host_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"First"});
  other_.selected = std::make_shared<FakeModule>(FakeModule{.name = u"Second"});
  auto& first = Connect(host_);
  auto& second = Connect(other_);
  Show(first);
  PutIntoBasket();
  Script().AnswerMessage(Answer::kYes, [&] { sessions_.Abandon(first); });
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_TRUE(host_.selected->insertions.empty());
  EXPECT_TRUE(other_.selected->insertions.empty());
  Show(second);
  Script().AnswerMessage(Answer::kYes);
  User().ClickToolbar(Main().Get<Toolbar>("Toolbar1"), "insert");
  EXPECT_EQ(other_.selected->insertions.size(), 1u);
}

TEST_F(ProgramWindowsTest, FailureOfOneHostKeepsNoOtherFromItsWindow) {
  auto& healthy = Connect(other_);
  host_.record.failing = "Add-Ins.Add";
  bool worked = false;
  Script().AnswerMessage(Answer::kAbort, [&] {
    Show(healthy);
    User().ChooseRow(Main().Get<ComboBox>("cmbSelector"), 1);
    worked = Main().Get<ComboBox>("cmbSelector").ListIndex() == 1;
  });
  Connect(host_);
  EXPECT_TRUE(worked);
}

TEST_F(ProgramWindowsTest, EndOfTheSessionUnloadsTheShownWindow) {
  auto& connection = Connect(host_);
  Show(connection);
  auto& window = Main();
  EXPECT_TRUE(window.Unload(UnloadReason::kSessionEnd));
  EXPECT_TRUE(window.IsUnloaded());
  EXPECT_FALSE(Holds());
  sessions_.Disconnect(connection);
}

TEST_F(ProgramWindowsTest, EndOfTheSessionUnloadsTheHiddenWindow) {
  auto& connection = Connect(host_);
  EXPECT_TRUE(Main().Unload(UnloadReason::kSessionEnd));
  EXPECT_TRUE(Main().IsUnloaded());
  sessions_.Disconnect(connection);
}

TEST_F(ProgramWindowsTest, UserWhoCancelsTheQuestionStopsTheEndOfTheSession) {
  Show(Connect(host_));
  ChangeLibrary();
  Script().AnswerMessage(Answer::kCancel);
  EXPECT_FALSE(Main().Unload(UnloadReason::kSessionEnd));
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
  // Closing it later hides it as ever.
  Script().AnswerMessage(Answer::kNo);
  User().Close(Main());
  EXPECT_FALSE(Main().Visible());
  EXPECT_TRUE(Main().IsLoaded());
}

TEST_F(ProgramWindowsTest, SessionThatDoesNotEndAfterAllFindsANewWindow) {
  auto& connection = Connect(host_);
  Show(connection);
  EXPECT_TRUE(Main().Unload(UnloadReason::kSessionEnd));
  host_.events.lock()->SelectionMayHaveChanged();
  Show(connection);
  toolkit_->Advance(0);
  EXPECT_TRUE(Main().Visible());
  EXPECT_TRUE(Holds());
}

// A store that cannot be read, as when memory runs out.
class FailingStore final : public SettingsStore {
 public:
  bool CreateKey(std::u16string_view) override { return false; }

 private:
  std::optional<RegistryValue> Read(std::u16string_view, std::u16string_view) const override {
    throw std::runtime_error("no settings");
  }
  bool Write(std::u16string_view, std::u16string_view, const RegistryValue&) override {
    return false;
  }
};

TEST_F(ProgramWindowsTest, WindowThatCannotBeLoadedIsStepOneAndLeavesNothing) {
  const auto forms = FormCount();
  FailingStore store;
  ProgramWindows windows(*toolkit_, store, folder_ / "program", [] { return nullptr; });
  HostSessions sessions(clipboard_, windows, [](auto) {});
  Script().AnswerMessage(Answer::kIgnore);
  const auto connection = sessions.Begin(std::make_unique<FakeApplication>(host_));
  sessions.Connect(*connection);
  const auto messages = Messages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(messages[0].starts_with(
      u"Vyskytla sa chyba vo funkcii 'IDTExtensibility_OnConnection' na riadku '1'.\r\n"));
  EXPECT_TRUE(host_.record.entries.empty());
  EXPECT_EQ(FormCount(), forms);
  connection->ShowMainWindow();
  sessions.Disconnect(*connection);
  EXPECT_EQ(FormCount(), forms);
}

}  // namespace
}  // namespace declarium
