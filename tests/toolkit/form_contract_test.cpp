#include <stdexcept>

#include "toolkit/contract.h"

namespace declarium {
namespace {

class FormContract : public Contract {
 protected:
  FormContract() {
    form().on_load = Log("load");
    form().on_resize = Log("resize");
    form().on_activate = Log("activate");
    form().on_query_unload = Log("query");
    form().on_unload = Log("unload");
    Get<TextBox>("Text1").on_got_focus = Log("focus");
  }
};

TEST_F(FormContract, CreatingRaisesNothing) {
  EXPECT_THAT(log_, IsEmpty());
  EXPECT_FALSE(form().IsLoaded());
  EXPECT_FALSE(form().Visible());
}

TEST_F(FormContract, FirstShowLoadsResizesActivatesAndFocusesTheFirstTabStop) {
  form().Show();
  EXPECT_THAT(TakeLog(), ElementsAre("load", "resize", "activate", "focus"));
  EXPECT_TRUE(form().Visible());
  EXPECT_TRUE(Get<TextBox>("Text1").HasFocus());
}

TEST_F(FormContract, FocusSetWhileLoadingOrActivatingStays) {
  form().on_activate = [this](auto&&...) { Get<ListBox>("List1").SetFocus(); };
  form().Show();
  EXPECT_TRUE(Get<ListBox>("List1").HasFocus());
}

TEST_F(FormContract, LoadingTwiceRaisesLoadOnce) {
  form().Load();
  form().Load();
  EXPECT_THAT(TakeLog(), ElementsAre("load"));
  EXPECT_TRUE(form().IsLoaded());
  EXPECT_FALSE(form().Visible());
}

TEST_F(FormContract, HidingAndShowingAgainKeepsTheState) {
  form().Show();
  Get<TextBox>("Text1").SetText(u"abc");
  form().Hide();
  EXPECT_FALSE(form().Visible());
  TakeLog();
  form().Show();
  EXPECT_TRUE(form().Visible());
  EXPECT_EQ(Get<TextBox>("Text1").Text(), u"abc");
  const auto log = TakeLog();
  EXPECT_THAT(log, ::testing::Not(::testing::Contains("load")));
  EXPECT_THAT(log, ::testing::Contains("activate"));
}

TEST_F(FormContract, ShowingAShownFormLeavesItMaximized) {
  form().Show();
  form().SetShowCommand(ShowCommand::kMaximized);
  form().Show();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMaximized);
}

TEST_F(FormContract, AMaximizedFormComesBackMaximizedAfterHiding) {
  form().Show();
  const Placement before = form().GetPlacement();
  form().SetShowCommand(ShowCommand::kMaximized);
  Placement maximized = before;
  maximized.show = ShowCommand::kMaximized;
  form().Hide();
  EXPECT_EQ(form().GetPlacement(), maximized);
  form().Show();
  EXPECT_EQ(form().GetPlacement(), maximized);
  form().SetShowCommand(ShowCommand::kNormal);
  EXPECT_EQ(form().GetPlacement(), before);
}

TEST_F(FormContract, HidingByCommandKeepsWhatWasShownToo) {
  form().Show();
  form().SetShowCommand(ShowCommand::kMaximized);
  form().SetShowCommand(ShowCommand::kHide);
  EXPECT_FALSE(form().Visible());
  form().Show();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMaximized);
}

TEST_F(FormContract, ShowingAMinimizedFormRestoresWhatItWas) {
  for (const ShowCommand was : {ShowCommand::kNormal, ShowCommand::kMaximized}) {
    form().Show();
    form().SetShowCommand(was);
    form().SetShowCommand(ShowCommand::kMinimized);
    EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMinimized);
    form().Show();
    EXPECT_EQ(form().GetPlacement().show, was);
  }
}

TEST_F(FormContract, AMinimizedFormThatWasHiddenIsRestoredWhenItIsShown) {
  form().Show();
  form().SetShowCommand(ShowCommand::kMaximized);
  form().SetShowCommand(ShowCommand::kMinimized);
  form().Hide();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMinimized);
  form().Show();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMaximized);
}

TEST_F(FormContract, AShowCommandBeforeTheFirstShowIsThatOfTheFirstShow) {
  form().on_load = [this] { form().SetShowCommand(ShowCommand::kMaximized); };
  form().Show();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kMaximized);
}

TEST_F(FormContract, APlacementThatHidesDoesNotKeepTheFormFromBeingShown) {
  form().on_load = [this] {
    Placement hidden = form().GetPlacement();
    hidden.show = ShowCommand::kHide;
    form().SetPlacement(hidden);
  };
  form().Show();
  EXPECT_EQ(form().GetPlacement().show, ShowCommand::kNormal);
}

TEST_F(FormContract, UnloadAsksThenUnloads) {
  form().Show();
  TakeLog();
  EXPECT_TRUE(form().Unload());
  EXPECT_THAT(TakeLog(), ElementsAre("query", "unload"));
  EXPECT_FALSE(form().IsLoaded());
  EXPECT_FALSE(form().Visible());
}

TEST_F(FormContract, CancelInQueryUnloadKeepsTheForm) {
  form().on_query_unload = [this](QueryUnload& query) {
    log_.push_back("query");
    query.cancel = true;
  };
  form().Show();
  TakeLog();
  EXPECT_FALSE(form().Unload());
  EXPECT_THAT(TakeLog(), ElementsAre("query"));
  EXPECT_TRUE(form().Visible());
}

TEST_F(FormContract, CancelInUnloadKeepsTheForm) {
  form().on_unload = [](bool& cancel) { cancel = true; };
  form().Show();
  EXPECT_FALSE(form().Unload());
  EXPECT_TRUE(form().Visible());
}

TEST_F(FormContract, TheCloseBoxTellsThatTheUserAsked) {
  UnloadReason reason = UnloadReason::kCode;
  form().on_query_unload = [&](QueryUnload& query) { reason = query.reason; };
  form().Show();
  user().Close(form());
  EXPECT_EQ(reason, UnloadReason::kUser);
  EXPECT_FALSE(form().IsLoaded());
}

TEST_F(FormContract, AskingToUnloadLeavesTheFormLoaded) {
  form().on_query_unload = [this](QueryUnload& query) {
    log_.push_back(query.reason == UnloadReason::kSessionEnd ? "asked" : "other");
  };
  form().on_unload = Log("unloaded");
  form().Show();
  TakeLog();
  EXPECT_TRUE(form().AskToUnload(UnloadReason::kSessionEnd));
  EXPECT_TRUE(form().IsLoaded());
  EXPECT_THAT(TakeLog(), ElementsAre("asked"));
  EXPECT_TRUE(form().UnloadUnasked());
  EXPECT_FALSE(form().IsLoaded());
  EXPECT_THAT(TakeLog(), ElementsAre("unloaded"));
}

TEST_F(FormContract, AFailedQuestionCanBeAskedAgain) {
  form().on_query_unload = [](QueryUnload&) { throw std::runtime_error("the question fails"); };
  form().Show();
  EXPECT_FALSE(toolkit().boundary.Run([this] { form().Unload(); }));
  EXPECT_TRUE(form().IsLoaded());
  form().on_query_unload = nullptr;
  EXPECT_TRUE(form().Unload());
}

TEST_F(FormContract, APlacementOutOfReachIsMovedOntoAScreen) {
  form().Show();
  form().SetPlacement({20000, 20000, 20800, 20600, ShowCommand::kNormal});
  const auto placement = form().GetPlacement();
  EXPECT_LT(placement.left, 10000);
  EXPECT_LT(placement.top, 10000);
  EXPECT_EQ(placement.right - placement.left, 800);
}

TEST_F(FormContract, AnUnloadedFormStaysUnloaded) {
  form().Show();
  form().Unload();
  TakeLog();
  form().Show();
  EXPECT_FALSE(form().Visible());
  EXPECT_TRUE(form().Unload());
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(FormContract, UnloadingANeverLoadedFormRaisesNothing) {
  EXPECT_TRUE(form().Unload());
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(FormContract, AFormMayUnloadItselfInItsOwnEvent) {
  auto& button = Get<CommandButton>("Command1");
  button.on_click = [this] { form().Unload(); };
  form().Show();
  user().Click(button);
  EXPECT_FALSE(form().IsLoaded());
}

TEST_F(FormContract, TheInnerAreaHasTheSizeOfTheTable) {
  form().Show();
  EXPECT_EQ(form().ScaleWidth(), 620);
  EXPECT_EQ(form().ScaleHeight(), 420);
  EXPECT_GE(form().OuterWidth(), 620);
  EXPECT_GT(form().OuterHeight(), 420);
}

TEST_F(FormContract, SettingTheOuterSizeResizesOnce) {
  form().Show();
  TakeLog();
  const int border = form().OuterWidth() - form().ScaleWidth();
  form().SetOuterWidth(700);
  EXPECT_THAT(TakeLog(), ElementsAre("resize"));
  EXPECT_EQ(form().OuterWidth(), 700);
  EXPECT_EQ(form().ScaleWidth(), 700 - border);
  form().SetOuterWidth(700);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(FormContract, TheUsersResizingIsReportedToo) {
  form().Show();
  TakeLog();
  user().Resize(form(), {720, 560});
  EXPECT_THAT(TakeLog(), ElementsAre("resize"));
  EXPECT_EQ(form().OuterWidth(), 720);
  EXPECT_EQ(form().OuterHeight(), 560);
}

TEST_F(FormContract, AResizeEventMaySetTheSizeAgain) {
  form().Show();
  form().on_resize = [this] {
    if (form().OuterWidth() < 622) {
      form().SetOuterWidth(622);
      return;
    }
    log_.push_back("layout");
  };
  TakeLog();
  user().Resize(form(), {300, 560});
  // A window manager may have set the user's size meanwhile, which is one more event.
  EXPECT_THAT(TakeLog(),
              ::testing::AllOf(::testing::Not(::testing::IsEmpty()), ::testing::Each("layout")));
  EXPECT_EQ(form().OuterWidth(), 622);
}

TEST_F(FormContract, APlacementGivenBackRestoresTheWindow) {
  form().Show();
  const Placement before = form().GetPlacement();
  user().Resize(form(), {720, 560});
  form().SetPlacement(before);
  EXPECT_EQ(form().GetPlacement(), before);
}

TEST_F(FormContract, APlacementCanBeSetWhileLoading) {
  const Placement wanted{.left = 40, .top = 60, .right = 740, .bottom = 560};
  form().on_load = [&] { form().SetPlacement(wanted); };
  form().Show();
  EXPECT_EQ(form().GetPlacement(), wanted);
  EXPECT_TRUE(form().Visible());
}

TEST_F(FormContract, CaptionCanBeChanged) {
  EXPECT_EQ(form().Caption(), u"Ukážka ovládacích prvkov");
  form().SetCaption(u"Žltý kôň - Declarium");
  EXPECT_EQ(form().Caption(), u"Žltý kôň - Declarium");
}

TEST_F(FormContract, AnUnknownNameAndAWrongTypeFailLoudly) {
  EXPECT_THROW((void)form().Get<ListBox>("lstNone"), std::logic_error);
  EXPECT_THROW((void)form().Get<ListBox>("Text1"), std::logic_error);
}

TEST_F(FormContract, AFaultyTableIsRefused) {
  static constexpr ControlDefinition kTwins[] = {{.kind = ControlKind::kLabel, .name = "Label1"},
                                                 {.kind = ControlKind::kLabel, .name = "Label1"}};
  const FormDefinition faulty{.name = "frmTwins", .controls = kTwins};
  EXPECT_THROW((void)toolkit().CreateForm(faulty), std::logic_error);
}

TEST_F(FormContract, ModalShowReturnsWhenTheFormIsClosed) {
  form().Show();
  TakeLog();
  const auto dialog = toolkit().CreateForm(demo::kDialog);
  dialog->Get<CommandButton>("Command2").on_click = [&] { dialog->Unload(); };
  user().InNextModalForm("frmDialog", [&](Form& shown) {
    log_.push_back("in dialog");
    EXPECT_TRUE(toolkit().IsModalOpen());
    user().Click(shown.Get<CommandButton>("Command2"));
  });
  dialog->Show(ShowMode::kModal, &form());
  log_.push_back("returned");
  EXPECT_THAT(TakeLog(), ElementsAre("in dialog", "activate", "focus", "returned"));
  EXPECT_FALSE(dialog->IsLoaded());
  EXPECT_FALSE(toolkit().IsModalOpen());
}

TEST_F(FormContract, HidingAModalFormEndsItsShowToo) {
  form().Show();
  const auto dialog = toolkit().CreateForm(demo::kDialog);
  user().InNextModalForm("frmDialog", [&](Form& shown) { shown.Hide(); });
  dialog->Show(ShowMode::kModal, &form());
  EXPECT_TRUE(dialog->IsLoaded());
  EXPECT_FALSE(dialog->Visible());
  EXPECT_TRUE(form().Enabled());
}

TEST_F(FormContract, QuitEndsTheRunWithItsCode) {
  form().Show();
  auto& timer = Get<Timer>("Timer1");
  timer.on_timer = [this] { toolkit().Quit(7); };
  timer.SetEnabled(true);
  EXPECT_EQ(toolkit().Run(), 7);
}

TEST_F(FormContract, WhatIsDestroyedLaterLivesUntilTheRunHasControlAgain) {
  form().Show();
  auto& timer = Get<Timer>("Timer1");
  auto object = std::make_shared<int>(0);
  const std::weak_ptr<int> kept = object;
  bool lived_in_its_event = false;
  timer.on_timer = [&] {
    timer.SetEnabled(false);
    toolkit().DestroyLater(std::move(object));
    toolkit().ProcessPendingEvents();
    lived_in_its_event = !kept.expired();
    // Its end is seen in an event of its own, before the run ends.
    timer.on_timer = [&] {
      EXPECT_TRUE(kept.expired());
      toolkit().Quit(0);
    };
    timer.SetEnabled(true);
  };
  timer.SetEnabled(true);
  toolkit().Run();
  EXPECT_TRUE(lived_in_its_event);
}

}  // namespace
}  // namespace declarium
