#include <stdexcept>

#include "toolkit/contract.h"

namespace declarium {
namespace {

using ControlContract = ShownContract;

TEST_F(ControlContract, BoundsAreThoseOfTheTable) {
  EXPECT_EQ(Get<ListBox>("List1").Bounds(), (Rect{8, 62, 224, 150}));
  EXPECT_EQ(Get<PictureBox>("Bar1").Bounds(), (Rect{234, 62, 8, 150}));
}

TEST_F(ControlContract, BoundsThatAreSetAreKept) {
  auto& bar = Get<PictureBox>("Bar1");
  bar.SetLeft(301);
  bar.SetTop(63);
  bar.SetWidth(5);
  bar.SetHeight(77);
  EXPECT_EQ(bar.Bounds(), (Rect{301, 63, 5, 77}));
  auto& combo = Get<ComboBox>("Combo1");
  combo.SetWidth(99);
  EXPECT_EQ(combo.Bounds().width, 99);
}

TEST_F(ControlContract, VisibilityAndEnabledAreTheControlsOwn) {
  auto& list = Get<ListBox>("List1");
  EXPECT_TRUE(list.Visible());
  list.SetVisible(false);
  EXPECT_FALSE(list.Visible());
  list.SetVisible(true);
  list.SetEnabled(false);
  EXPECT_FALSE(list.Enabled());
  list.SetEnabled(true);
  form().Hide();
  EXPECT_TRUE(list.Visible());
  EXPECT_TRUE(list.Enabled());
}

TEST_F(ControlContract, FocusIsLostByTheOldThenGotByTheNewControl) {
  auto& text = Get<TextBox>("Text1");
  auto& list = Get<ListBox>("List1");
  text.SetFocus();
  text.on_lost_focus = Log("text lost");
  list.on_got_focus = Log("list got");
  list.SetFocus();
  EXPECT_THAT(TakeLog(), ElementsAre("text lost", "list got"));
  EXPECT_TRUE(list.HasFocus());
  EXPECT_FALSE(text.HasFocus());
}

TEST_F(ControlContract, SettingTheFocusWhereItIsFiresNothing) {
  auto& list = Get<ListBox>("List1");
  list.SetFocus();
  list.on_got_focus = Log("got");
  list.SetFocus();
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ControlContract, AHiddenOrDisabledControlTakesNoFocus) {
  auto& text = Get<TextBox>("Text1");
  auto& list = Get<ListBox>("List1");
  text.SetFocus();
  list.SetVisible(false);
  list.SetFocus();
  EXPECT_TRUE(text.HasFocus());
  list.SetVisible(true);
  list.SetEnabled(false);
  list.SetFocus();
  EXPECT_TRUE(text.HasFocus());
}

TEST_F(ControlContract, HidingTheFocusedControlPassesTheFocusOn) {
  auto& text = Get<TextBox>("Text1");
  text.SetFocus();
  text.on_lost_focus = Log("lost");
  text.SetVisible(false);
  EXPECT_THAT(TakeLog(), ElementsAre("lost"));
  EXPECT_TRUE(Get<ListBox>("List1").HasFocus());
}

TEST_F(ControlContract, DisablingTheFocusedControlPassesTheFocusOn) {
  auto& list = Get<ListBox>("List1");
  list.SetFocus();
  list.SetEnabled(false);
  EXPECT_TRUE(Get<ComboBox>("Combo1").HasFocus());
}

TEST_F(ControlContract, TabGoesFromControlToControlInTheOrderOfTheTable) {
  Get<TextBox>("Text1").SetFocus();
  user().PressKey(key::kTab);
  EXPECT_TRUE(Get<ListBox>("List1").HasFocus());
  user().PressKey(key::kTab);
  EXPECT_TRUE(Get<ComboBox>("Combo1").HasFocus());
}

TEST_F(ControlContract, TheUsersClickFocusesAndClicksTheButton) {
  auto& button = Get<CommandButton>("Command1");
  button.on_got_focus = Log("got");
  button.on_click = Log("click");
  user().Click(button);
  EXPECT_THAT(TakeLog(), ElementsAre("got", "click"));
}

TEST_F(ControlContract, SpaceClicksTheFocusedButton) {
  auto& button = Get<CommandButton>("Command1");
  button.on_click = Log("click");
  button.SetFocus();
  user().PressKey(key::kSpace);
  EXPECT_THAT(TakeLog(), ElementsAre("click"));
}

TEST_F(ControlContract, CaptionsCanBeChanged) {
  auto& label = Get<Label>("Label1");
  EXPECT_EQ(label.Caption(), u"&Názov:");
  label.SetCaption(u"Nájdených: 5");
  EXPECT_EQ(label.Caption(), u"Nájdených: 5");
  EXPECT_EQ(Get<Frame>("Frame1").Caption(), u"Kategórie");
}

TEST_F(ControlContract, ACheckBoxFiresClickOnlyWhenItsValueChanges) {
  auto& box = Get<CheckBox>("Check1");
  box.on_click = Log("click");
  EXPECT_EQ(box.Value(), 0);
  EXPECT_TRUE(box.SetValue(1));
  EXPECT_TRUE(box.SetValue(1));
  EXPECT_TRUE(box.SetValue(2));
  EXPECT_FALSE(box.SetValue(3));
  EXPECT_EQ(box.Value(), 2);
  EXPECT_THAT(TakeLog(), ElementsAre("click", "click"));
}

TEST_F(ControlContract, TheUserTurnsACheckBoxOnAndOff) {
  auto& box = Get<CheckBox>("Check1");
  box.on_click = [this, &box] { log_.push_back(std::to_string(box.Value())); };
  user().Click(box);
  user().Click(box);
  box.SetValue(2);
  user().Click(box);
  EXPECT_THAT(TakeLog(), ElementsAre("1", "0", "2", "0"));
}

TEST_F(ControlContract, AProgressBarStaysWithinItsRange) {
  auto& bar = Get<ProgressBar>("PB");
  EXPECT_EQ(bar.Maximum(), 100);
  bar.SetMaximum(30'000);
  bar.SetValue(29'999);
  EXPECT_EQ(bar.Value(), 29'999);
  bar.SetValue(40'000);
  EXPECT_EQ(bar.Value(), 30'000);
  bar.SetMaximum(10);
  EXPECT_EQ(bar.Value(), 10);
  bar.SetValue(-1);
  EXPECT_EQ(bar.Value(), 0);
}

TEST_F(ControlContract, ToolTipsCanBeChanged) {
  auto& text = Get<TextBox>("Text1");
  EXPECT_EQ(text.ToolTip(), u"Začiatok názvu");
  text.SetToolTip(u"Názov");
  EXPECT_EQ(text.ToolTip(), u"Názov");
}

TEST_F(ControlContract, PointersAreKept) {
  EXPECT_EQ(Get<PictureBox>("Bar1").Pointer(), MousePointer::kSizeWestEast);
  Get<PictureBox>("Bar1").SetPointer(MousePointer::kDefault);
  EXPECT_EQ(Get<PictureBox>("Bar1").Pointer(), MousePointer::kDefault);
  toolkit().SetPointer(MousePointer::kHourglass);
  EXPECT_EQ(toolkit().Pointer(), MousePointer::kHourglass);
  toolkit().SetPointer(MousePointer::kDefault);
  EXPECT_EQ(toolkit().Pointer(), MousePointer::kDefault);
}

TEST_F(ControlContract, ADisabledToolbarButtonIsEnabledByItsKey) {
  auto& toolbar = Get<Toolbar>("Toolbar1");
  EXPECT_TRUE(toolbar.ButtonEnabled("new"));
  EXPECT_FALSE(toolbar.ButtonEnabled("save"));
  toolbar.SetButtonEnabled("save", true);
  EXPECT_TRUE(toolbar.ButtonEnabled("save"));
  EXPECT_THROW(toolbar.SetButtonEnabled("none", true), std::logic_error);
  EXPECT_THROW((void)toolbar.ButtonEnabled("none"), std::logic_error);
}

TEST_F(ControlContract, AToolbarClickCarriesTheKey) {
  auto& toolbar = Get<Toolbar>("Toolbar1");
  toolbar.on_button_click = [this](std::string_view key) { log_.emplace_back(key); };
  user().ClickToolbar(toolbar, "add");
  user().ClickToolbar(toolbar, "settings");
  EXPECT_THAT(TakeLog(), ElementsAre("add", "settings"));
}

TEST_F(ControlContract, AToolbarTakesNoFocus) {
  Get<ListBox>("List1").SetFocus();
  user().ClickToolbar(Get<Toolbar>("Toolbar1"), "add");
  EXPECT_TRUE(Get<ListBox>("List1").HasFocus());
}

class ToolbarKeysContract : public Contract {
 protected:
  ToolbarKeysContract() {
    bar().on_button_click = [this](std::string_view key) { log_.emplace_back(key); };
    frmBar_->Show();
  }

  Toolbar& bar() { return frmBar_->Get<Toolbar>("Toolbar1"); }
  TextBox& box() { return frmBar_->Get<TextBox>("Text1"); }
  void Press(std::initializer_list<int> keys) {
    for (const int key : keys) user().PressKey(key);
  }

 private:
  std::unique_ptr<Form> frmBar_ = toolkit().CreateForm(demo::kBar);
};

TEST_F(ToolbarKeysContract, TabStopsAtTheToolbar) {
  ASSERT_TRUE(box().HasFocus());
  Press({key::kTab});
  EXPECT_TRUE(bar().HasFocus());
  Press({key::kTab});
  EXPECT_TRUE(box().HasFocus());
}

TEST_F(ToolbarKeysContract, SpaceAndEnterPressTheFirstEnabledButtonAtFirst) {
  bar().SetButtonEnabled("new", false);
  bar().SetButtonEnabled("save", true);
  bar().SetFocus();
  Press({key::kSpace, key::kEnter});
  EXPECT_THAT(TakeLog(), ElementsAre("save", "save"));
  EXPECT_TRUE(bar().HasFocus());
}

TEST_F(ToolbarKeysContract, LeftAndRightGoAroundPastGapsAndDisabledButtons) {
  bar().SetFocus();
  Press({key::kRight, key::kSpace});
  Press({key::kRight, key::kSpace});
  Press({key::kLeft, key::kSpace});
  Press({key::kLeft, key::kSpace});
  EXPECT_THAT(TakeLog(), ElementsAre("find", "new", "find", "new"));
}

TEST_F(ToolbarKeysContract, HomeAndEndGoToTheFirstAndTheLastButton) {
  bar().SetFocus();
  Press({key::kEnd, key::kSpace});
  Press({key::kHome, key::kSpace});
  EXPECT_THAT(TakeLog(), ElementsAre("find", "new"));
}

TEST_F(ToolbarKeysContract, AButtonThatDisabledItselfPassesTheKeysOnToTheNext) {
  bar().on_button_click = [this](std::string_view key) {
    log_.emplace_back(key);
    bar().SetButtonEnabled(key, false);
  };
  bar().SetFocus();
  Press({key::kSpace, key::kSpace, key::kSpace});
  EXPECT_THAT(TakeLog(), ElementsAre("new", "find"));
}

TEST_F(ToolbarKeysContract, AShortcutPressesItsButtonFromAnyControl) {
  box().SetFocus();
  user().PressKey('F', {.control = true});
  EXPECT_THAT(TakeLog(), ElementsAre("find"));
  EXPECT_TRUE(box().HasFocus());
  bar().SetButtonEnabled("find", false);
  user().PressKey('F', {.control = true});
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ControlContract, TheMenuKeyAndShiftF10AskForTheContextMenu) {
  auto& view = Get<ListView>("View1");
  view.on_context_menu = Log("menu");
  view.SetFocus();
  user().PressKey(key::kApps);
  user().PressKey(key::kF10, {.shift = true});
  EXPECT_THAT(TakeLog(), ElementsAre("menu", "menu"));
}

TEST_F(ControlContract, APopupMenuThatTheKeyboardAskedForIsUsed) {
  auto& view = Get<ListView>("View1");
  view.on_context_menu = [this] { form().ShowPopupMenu(Get<MenuItem>("mnuPopup")); };
  Get<MenuItem>("mnuDelAll").on_click = Log("all");
  view.SetFocus();
  user().ChooseInNextPopup(form(), "mnuDelAll");
  user().PressKey(key::kF10, {.shift = true});
  EXPECT_THAT(TakeLog(), ElementsAre("all"));
}

TEST_F(ControlContract, AMenuEntryIsChosenAfterItsMenuOpened) {
  Get<MenuItem>("mnuDatabase").on_click = Log("opens");
  Get<MenuItem>("mnuNew").on_click = Log("new");
  user().ChooseMenu(form(), "mnuNew");
  EXPECT_THAT(TakeLog(), ElementsAre("opens", "new"));
}

TEST_F(ControlContract, AShortcutChoosesItsEntryAfterTheMenusClick) {
  Get<MenuItem>("mnuDatabase").on_click = Log("opens");
  Get<MenuItem>("mnuNew").on_click = Log("new");
  Get<TextBox>("Text1").SetFocus();
  Get<TextBox>("Text1").on_key_down = Log("key");
  user().PressKey('N', {.control = true});
  EXPECT_THAT(TakeLog(), ::testing::IsSupersetOf({"opens", "new"}));
}

TEST_F(ControlContract, ADisabledEntryIsNotReachedByItsShortcut) {
  Get<MenuItem>("mnuSave").on_click = Log("save");
  Get<TextBox>("Text1").SetFocus();
  user().PressKey('S', {.control = true});
  EXPECT_THAT(TakeLog(), IsEmpty());
  Get<MenuItem>("mnuSave").SetEnabled(true);
  user().PressKey('S', {.control = true});
  EXPECT_THAT(TakeLog(), ElementsAre("save"));
}

TEST_F(ControlContract, MenuCaptionsAndStatesAreKept) {
  auto& item = Get<MenuItem>("mnuDelOnce");
  EXPECT_EQ(item.Caption(), u"Odstrániť &položku");
  item.SetCaption(u"Odstrániť &položku 'RECT'");
  EXPECT_EQ(item.Caption(), u"Odstrániť &položku 'RECT'");
  EXPECT_TRUE(item.Enabled());
  item.SetEnabled(false);
  EXPECT_FALSE(item.Enabled());
  EXPECT_EQ(Get<MenuItem>("mnuNew").Caption(), u"&Nová...");
}

TEST_F(ControlContract, TheEntryChosenInAPopupMenuIsReported) {
  Get<MenuItem>("mnuPopup").on_click = Log("opens");
  Get<MenuItem>("mnuDelAll").on_click = Log("all");
  user().ChooseInNextPopup(form(), "mnuDelAll");
  form().ShowPopupMenu(Get<MenuItem>("mnuPopup"));
  EXPECT_THAT(TakeLog(), ElementsAre("all"));
}

TEST_F(ControlContract, ATimerFiresWhileItIsEnabled) {
  auto& timer = Get<Timer>("Timer1");
  int fired = 0;
  timer.on_timer = [&] {
    if (++fired == 3) timer.SetEnabled(false);
  };
  EXPECT_EQ(timer.Interval(), 20);
  timer.SetEnabled(true);
  EXPECT_TRUE(user().WaitUntil([&] { return fired == 3; }));
  EXPECT_FALSE(timer.Enabled());
  const std::uint32_t begin = toolkit().TickCount();
  user().WaitUntil([&] { return toolkit().TickCount() - begin > 60; });
  EXPECT_EQ(fired, 3);
}

TEST_F(ControlContract, TheClipboardCarriesText) {
  toolkit().ClearClipboard();
  EXPECT_EQ(toolkit().ClipboardText(), u"");
  toolkit().SetClipboardText(u"Const Žltý = 1\r\n");
  EXPECT_EQ(toolkit().ClipboardText(), u"Const Žltý = 1\r\n");
  toolkit().ClearClipboard();
  EXPECT_EQ(toolkit().ClipboardText(), u"");
}

}  // namespace
}  // namespace declarium
