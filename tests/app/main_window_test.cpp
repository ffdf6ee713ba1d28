#include "app/main_window.h"

#include <limits>

#include "app/window_fixture.h"
#include "shell/main_layout.h"
#include "shell/settings.h"
#include "toolkit/headless/form.h"

namespace declarium {
namespace {

using Rows = std::vector<std::u16string>;

class MainWindowTest : public WindowTest {
 protected:
  MainWindowTest() { WriteWinLibrary(); }
  [[nodiscard]] headless::HeadlessForm& Frame() {
    return dynamic_cast<headless::HeadlessForm&>(*Form().frmMain);
  }
};

TEST_F(MainWindowTest, FirstStartTakesTheDefaultsAndKeepsTheDesignedPlacement) {
  Open();
  EXPECT_EQ(Form().cmbRange.Text(), u"Private");
  EXPECT_EQ(Form().cmbSelector.Text(), u"Declare");
  EXPECT_EQ(Form().txtInput.Bounds().width, 300);
  EXPECT_EQ(Form().RTB.Bounds().height, 146);
  const auto designed = toolkit().CreateForm(MainFormDefinition());
  EXPECT_EQ(Form().frmMain->GetPlacement(), designed->GetPlacement());
  EXPECT_EQ(Form().frmMain->ScaleWidth(), MainFormDefinition().size.width);
  EXPECT_EQ(Form().frmMain->ScaleHeight(), MainFormDefinition().size.height);
}

TEST_F(MainWindowTest, TheCurrentListHasTheFocusWhenTheWindowAppears) {
  WriteSetting(*store_, setting::kLastDatabaseIndex, -1);
  Open();
  EXPECT_TRUE(Form().lstDeclare.HasFocus());
}

TEST_F(MainWindowTest, SelectorAndScopeHoldExactlyTheirRows) {
  Open();
  EXPECT_EQ(RowsOf(Form().cmbSelector), (Rows{u"Const", u"Declare", u"Type"}));
  EXPECT_EQ(RowsOf(Form().cmbRange), (Rows{u"Private", u"Public"}));
}

TEST_F(MainWindowTest, ReopeningReturnsToTheSamePlaceLibraryAndChoices) {
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  User().ChooseRow(Form().cmbSelector, 2);
  User().ChooseRow(Form().cmbRange, 1);
  Form().frmMain->SetPlacement({40, 30, 900, 700, ShowCommand::kNormal});
  const auto placement = Form().frmMain->GetPlacement();
  Reopen();
  EXPECT_EQ(Form().frmMain->GetPlacement(), placement);
  EXPECT_EQ(Form().cmbSelector.Text(), u"Type");
  EXPECT_EQ(Form().cmbRange.Text(), u"Public");
  EXPECT_EQ(Form().frmMain->Caption(), u"Win - Declarium 3.0");
  EXPECT_EQ(RowsOf(Form().lstType), (Rows{u"POINTAPI", u"RECT"}));
}

TEST_F(MainWindowTest, ReopeningAMaximizedWindowReturnsToThatAndToItsRestoredPlace) {
  Open();
  Form().frmMain->SetPlacement({40, 30, 900, 700, ShowCommand::kMaximized});
  const auto placement = Form().frmMain->GetPlacement();
  Reopen();
  EXPECT_EQ(Form().frmMain->GetPlacement(), placement);
}

TEST_F(MainWindowTest, AMaximizedWindowStaysSoFromOneShowingInTheHostToTheNext) {
  options_.mode = RunMode::kInHost;
  Open();
  Form().frmMain->SetPlacement({40, 30, 900, 700, ShowCommand::kMaximized});
  const auto placement = Form().frmMain->GetPlacement();
  window_->ShowMainWindow();
  EXPECT_EQ(Form().frmMain->GetPlacement(), placement) << "brought forward";
  User().Close(*Form().frmMain);
  window_->ShowMainWindow();
  EXPECT_EQ(Form().frmMain->GetPlacement(), placement) << "closed and shown again";
  User().Close(*Form().frmMain);
  EXPECT_TRUE(window_->Unload());
  EXPECT_EQ(ReadWindowSettings(*store_).show_command, 3) << "disconnected while hidden";
}

TEST_F(MainWindowTest, ApplyingThePlacementLaysNothingOutYetSoThatTheStoredPanesAreUsed) {
  WindowSettings settings;
  settings.size_saved = true;
  settings.edges = {40, 30, 1040, 830};
  settings.panes.main_width = 400;
  WriteWindowSettings(*store_, settings);
  window_ = std::make_unique<MainWindow>(*toolkit_, *store_, options_);
  window_->Load();
  EXPECT_EQ(Form().txtInput.Bounds().width, 400) << "laid out before it is shown";
}

TEST_F(MainWindowTest, SettingsAreWrittenBeforeTheQuestionAndCancelKeepsTheWindow) {
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  Script().AnswerText(u"");
  User().ChooseMenu(*Form().frmMain, "mnuRename");
  User().ChooseRow(Form().cmbSelector, 2);
  Script().AnswerMessage(Answer::kCancel, [this] {
    EXPECT_EQ(ReadSetting(*store_, setting::kSelector), 2);
    EXPECT_EQ(ReadSetting(*store_, setting::kSizeSaved), 1);
    EXPECT_EQ(ReadSetting(*store_, setting::kLastDatabaseName), u"Win");
  });
  User().Close(*Form().frmMain);
  EXPECT_TRUE(Frame().Visible());
  EXPECT_FALSE(toolkit_->QuitWasCalled());
}

TEST_F(MainWindowTest, ClosingAStandaloneWindowEndsTheProgram) {
  Open();
  User().Close(*Form().frmMain);
  EXPECT_TRUE(toolkit_->QuitWasCalled());
  EXPECT_FALSE(Form().CodeModuleChecker.Enabled());
}

TEST_F(MainWindowTest, ClosingInsideTheHostHidesTheWindowUntilItIsShownAgain) {
  options_.mode = RunMode::kInHost;
  Open();
  User().Close(*Form().frmMain);
  EXPECT_FALSE(Frame().Visible());
  EXPECT_TRUE(Frame().IsLoaded());
  EXPECT_FALSE(Form().CodeModuleChecker.Enabled());
  window_->ShowMainWindow();
  EXPECT_TRUE(Frame().Visible());
  EXPECT_TRUE(Form().CodeModuleChecker.Enabled());
  EXPECT_TRUE(window_->Unload());
  EXPECT_FALSE(Frame().IsLoaded());
}

TEST_F(MainWindowTest, ShowingAShownWindowOpensNoSecondOne) {
  Open();
  const auto forms = toolkit_->Forms().size();
  window_->ShowMainWindow();
  EXPECT_EQ(toolkit_->Forms().size(), forms);
}

TEST_F(MainWindowTest, InsertIsEnabledByACodeModuleAndANonEmptyBasketTogether) {
  bool has_module = false;
  Rows inserted;
  options_.mode = RunMode::kInHost;
  options_.host.has_code_module = [&] { return has_module; };
  options_.host.insert = [&](const auto& text) { inserted.push_back(text()); };
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  User().ChooseRow(Form().cmbSelector, 0);
  has_module = true;
  window_->CodeModuleChanged();
  EXPECT_FALSE(Form().Toolbar1.ButtonEnabled("insert"));
  User().ChooseRow(Form().lstConst, 0);
  User().ClickToolbar(Form().Toolbar1, "add");
  EXPECT_TRUE(Form().Toolbar1.ButtonEnabled("insert"));
  User().ClickToolbar(Form().Toolbar1, "insert");
  EXPECT_EQ(inserted, (Rows{u"Private Const A = 1\r\n"}));
  has_module = false;
  window_->CodeModuleChanged();
  EXPECT_FALSE(Form().Toolbar1.ButtonEnabled("insert"));
}

TEST_F(MainWindowTest, TheCodeModuleIsCheckedEveryHundredMilliseconds) {
  int checks = 0;
  options_.host.check_code_module = [&] { ++checks; };
  Open();
  toolkit_->Advance(1000);
  EXPECT_EQ(checks, 10);
}

TEST_F(MainWindowTest, AStoredStateThatShowsNoWindowCountsAsNormal) {
  for (const std::int32_t state : {0, 12, 99, std::numeric_limits<std::int32_t>::min()}) {
    WriteWindowSettings(*store_, {.edges = {100, 100, 900, 700}, .show_command = state});
    Open();
    EXPECT_EQ(Form().frmMain->GetPlacement().show, ShowCommand::kNormal) << state;
    window_.reset();
  }
}

TEST_F(MainWindowTest, AWindowStoredOnAScreenThatIsGoneComesBackOnOneThatIsThere) {
  toolkit_->SetScreens({{0, 0, 1280, 1000}});
  WriteWindowSettings(*store_, {.edges = {3000, 2000, 3800, 2600}});
  Open();
  const auto placement = Form().frmMain->GetPlacement();
  EXPECT_EQ(placement, (Placement{480, 400, 1280, 1000, ShowCommand::kNormal}));
}

TEST_F(MainWindowTest, TooSmallWindowsSnapBackToTheSmallestSize) {
  Open();
  User().Resize(*Form().frmMain, {300, 200});
  EXPECT_EQ(Form().frmMain->OuterWidth(), 622);
  EXPECT_EQ(Form().frmMain->OuterHeight(), 400);
}

TEST_F(MainWindowTest, EveryPaneStandsWhereTheLayoutPutsIt) {
  Open();
  User().Resize(*Form().frmMain, {901, 733});
  const auto layout =
      LayOutMain(Form().frmMain->ScaleWidth(), Form().frmMain->ScaleHeight(), PaneSizes());
  EXPECT_EQ(Form().lstConst.Bounds(), layout.kind_list);
  EXPECT_EQ(Form().lstDeclare.Bounds(), layout.kind_list);
  EXPECT_EQ(Form().lstType.Bounds(), layout.kind_list);
  EXPECT_EQ(Form().txtInput.Bounds(), layout.txtInput);
  EXPECT_EQ(Form().txtFind.Bounds(), layout.txtFind);
  EXPECT_EQ(Form().lstFind.Bounds(), layout.lstFind);
  EXPECT_EQ(Form().lstAdd.Bounds(), layout.lstAdd);
  EXPECT_EQ(Form().lstShare.Bounds(), layout.lstShare);
  EXPECT_EQ(Form().RTB.Bounds(), layout.RTB);
  EXPECT_EQ(Form().PosMainWidth.Bounds(), layout.PosMainWidth);
  EXPECT_EQ(Form().PosAddHeight.Bounds(), layout.PosAddHeight);
  EXPECT_EQ(Form().PosRtbHeight.Bounds(), layout.PosRtbHeight);
  EXPECT_EQ(Form().lstAdd.ColumnWidth(), layout.add_column_width);
  EXPECT_EQ(Form().lstShare.ColumnWidth(), layout.share_column_width);
}

TEST_F(MainWindowTest, PaneSizesComeBackAfterReopening) {
  Open();
  Form().PosMainWidth.SetFocus();
  User().PressKey(Form().PosMainWidth, key::kRight);
  User().PressKey(Form().PosMainWidth, key::kEnter);
  EXPECT_EQ(Form().txtInput.Bounds().width, 308);
  Reopen();
  EXPECT_EQ(Form().txtInput.Bounds().width, 308);
}

TEST_F(MainWindowTest, ChosenColorsApplyFromTheNextItemShown) {
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  User().ChooseRow(Form().cmbSelector, 0);
  Script().InForm("frmOptions", [this](class Form& form) {
    User().DoubleClick(form.Get<PictureBox>("picColor0"));
    User().Click(form.Get<CommandButton>("Command2"));
  });
  Script().AnswerColor(0x112233);
  User().ClickToolbar(Form().Toolbar1, "settings");
  User().ChooseRow(Form().lstConst, 0);
  EXPECT_EQ(Form().RTB.Runs().front(), (ColoredRun{0x112233, u"Const"}));
}

TEST_F(MainWindowTest, FindOpensTheSearchDialogWhoseHitsShowInTheWindow) {
  Open();
  User().ChooseRow(Form().cmbDatabase, 0);
  User().ClickToolbar(Form().Toolbar1, "find");
  auto& frmFind = *toolkit_->Forms().back();
  ASSERT_EQ(frmFind.Name(), "frmFind");
  frmFind.Get<TextBox>("Text1").SetText(u"RECT");
  User().Click(frmFind.Get<CommandButton>("Command2"));
  auto& LV1 = frmFind.Get<ListView>("LV1");
  ASSERT_EQ(LV1.Count(), 1);
  User().ClickEntry(LV1, 1);
  EXPECT_TRUE(Form().RTB.Text().starts_with(u"Type RECT"));
  EXPECT_EQ(EntriesOf(Form().lstShare), (Rows{u"1 MAX_PATH", u"3 POINTAPI"}));
  User().DoubleClickEntry(LV1, 1);
  EXPECT_EQ(EntriesOf(Form().lstAdd), (Rows{u"3 RECT"}));
}

TEST_F(MainWindowTest, ControlFOpensTheSearchDialog) {
  Open();
  User().PressKey(Form().txtInput, 'F', {.control = true});
  EXPECT_EQ(toolkit_->Forms().back()->Name(), "frmFind");
  EXPECT_TRUE(toolkit_->Forms().back()->Visible());
}

TEST_F(MainWindowTest, TheTabKeyReachesEveryVisibleControlAndTheToolbar) {
  Open();
  Form().Toolbar1.SetFocus();
  std::vector<std::string> reached;
  do {
    reached.push_back(toolkit_->FocusedControl()->Name());
    User().PressKey(key::kTab);
  } while (!Form().Toolbar1.HasFocus() && reached.size() < 30);
  EXPECT_EQ(reached, (std::vector<std::string>{"Toolbar1", "cmbDatabase", "cmbSelector", "cmbRange",
                                               "txtInput", "lstDeclare", "txtFind", "lstFind",
                                               "lstAdd", "lstShare", "RTB", "PosMainWidth",
                                               "PosAddHeight", "PosRtbHeight"}));
}

TEST_F(MainWindowTest, ClosingTheWindowClosesTheSearchDialogAndKeepsItsCheckBoxes) {
  Open();
  User().ClickToolbar(Form().Toolbar1, "find");
  auto& frmFind = *toolkit_->Forms().back();
  User().Click(frmFind.Get<CheckBox>("Check1"));
  User().Close(*Form().frmMain);
  EXPECT_EQ(ReadSetting(*store_, setting::kFindCheckBox), u"0110111011");
}

}  // namespace
}  // namespace declarium
