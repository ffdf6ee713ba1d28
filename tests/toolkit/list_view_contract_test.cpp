#include <memory>
#include <stdexcept>

#include "toolkit/contract.h"

namespace declarium {
namespace {

class NumberedEntries : public ListEntries {
 public:
  explicit NumberedEntries(int count) : count_(count) {}
  [[nodiscard]] int Count() const override { return count_; }
  [[nodiscard]] ListEntry At(int position) const override { return {u"Entry", position % 5}; }

 private:
  int count_;
};

class ListViewContract : public ShownContract {
 protected:
  ListViewContract() {
    view().Append({u"Beta", 1});
    view().Append({u"gama", 2});
    view().Append({u"Žeta", 3});
    view().on_item_click = [this](int position) {
      log_.push_back("item " + std::to_string(position));
    };
  }

  ListView& view() { return Get<ListView>("View1"); }
};

TEST_F(ListViewContract, EntriesCountFromOne) {
  ASSERT_EQ(view().Count(), 3);
  EXPECT_EQ(view().Entry(1), (ListEntry{u"Beta", 1}));
  EXPECT_EQ(view().Entry(3), (ListEntry{u"Žeta", 3}));
  EXPECT_EQ(view().Selected(), -1);
}

TEST_F(ListViewContract, InsertingPutsTheEntryBeforeTheOneAtThePosition) {
  view().Insert(1, {u"Alfa", 1});
  view().Insert(5, {u"Omega", 3});
  EXPECT_EQ(view().Entry(1).text, u"Alfa");
  EXPECT_EQ(view().Entry(2).text, u"Beta");
  EXPECT_EQ(view().Entry(5).text, u"Omega");
}

TEST_F(ListViewContract, SelectingFromCodeFiresNothing) {
  view().Select(2);
  EXPECT_EQ(view().Selected(), 2);
  view().Select(-1);
  EXPECT_EQ(view().Selected(), -1);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ListViewContract, TheSelectionStaysWithItsEntry) {
  view().Select(2);
  view().Insert(1, {u"Alfa", 1});
  EXPECT_EQ(view().Selected(), 3);
  view().Remove(1);
  EXPECT_EQ(view().Selected(), 2);
  view().Remove(3);
  EXPECT_EQ(view().Selected(), 2);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ListViewContract, RemovingTheSelectedEntryLosesTheSelection) {
  view().Select(2);
  view().Remove(2);
  EXPECT_EQ(view().Count(), 2);
  EXPECT_EQ(view().Selected(), -1);
  EXPECT_EQ(view().Entry(2).text, u"Žeta");
}

TEST_F(ListViewContract, ClearingEmptiesEverything) {
  view().Select(2);
  view().Clear();
  EXPECT_EQ(view().Count(), 0);
  EXPECT_EQ(view().Selected(), -1);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ListViewContract, APressSelectsThenReportsThePress) {
  view().on_mouse_down = [this](const MouseEvent& event) {
    log_.push_back("down on " + std::to_string(view().HitTest(event.at)));
  };
  view().on_mouse_up = Log("up");
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  EXPECT_THAT(TakeLog(), ElementsAre("item 2", "down on 2", "up"));
  EXPECT_EQ(view().Selected(), 2);
  EXPECT_TRUE(view().HasFocus());
}

TEST_F(ListViewContract, TheRightButtonSelectsToo) {
  view().on_mouse_down = [this](const MouseEvent& event) {
    log_.push_back(event.button == MouseButton::kRight ? "right" : "other");
  };
  user().ClickEntry(view(), 3, MouseButton::kRight);
  EXPECT_THAT(TakeLog(), ElementsAre("item 3", "right"));
  EXPECT_EQ(view().Selected(), 3);
}

TEST_F(ListViewContract, ClickingTheSelectedEntryReportsItAgain) {
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  EXPECT_THAT(TakeLog(), ElementsAre("item 2", "item 2"));
}

TEST_F(ListViewContract, APressOnEmptySpaceKeepsTheSelection) {
  view().Select(2);
  view().on_mouse_down = [this](const MouseEvent& event) {
    log_.push_back("down on " + std::to_string(view().HitTest(event.at)));
  };
  user().ClickEmptySpace(view());
  EXPECT_THAT(TakeLog(), ElementsAre("down on -1"));
  EXPECT_EQ(view().Selected(), 2);
}

TEST_F(ListViewContract, ADoubleClickFollowsThePress) {
  view().on_mouse_down = Log("down");
  view().on_double_click = Log("double");
  user().DoubleClickEntry(view(), 1);
  EXPECT_THAT(TakeLog(), ElementsAre("item 1", "down", "double"));
}

TEST_F(ListViewContract, ADoubleClickOnEmptySpaceIsReportedWithoutAnItem) {
  view().Select(1);
  view().on_mouse_down = Log("down");
  view().on_double_click = Log("double");
  user().DoubleClickEmptySpace(view());
  EXPECT_THAT(TakeLog(), ElementsAre("down", "double"));
  EXPECT_EQ(view().Selected(), 1);
}

TEST_F(ListViewContract, ArrowKeysSelectAndReportTheItem) {
  view().Select(1);
  view().SetFocus();
  TakeLog();
  user().PressKey(key::kDown);
  EXPECT_EQ(view().Selected(), 2);
  EXPECT_THAT(TakeLog(), ElementsAre("item 2"));
}

TEST_F(ListViewContract, ASwallowedArrowKeyMovesNothing) {
  view().Select(1);
  view().SetFocus();
  TakeLog();
  view().on_key_down = [](KeyDown& down) { down.Swallow(); };
  user().PressKey(key::kDown);
  EXPECT_EQ(view().Selected(), 1);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ListViewContract, EnterReachesTheList) {
  view().SetFocus();
  view().on_key_down = [this](KeyDown& down) { log_.push_back(std::to_string(down.code)); };
  user().PressKey(key::kEnter);
  EXPECT_THAT(TakeLog(), ElementsAre("13"));
}

TEST_F(ListViewContract, AnItemClickMayRemoveTheEntry) {
  view().on_item_click = [this](int position) { view().Remove(position); };
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  EXPECT_EQ(view().Count(), 2);
  EXPECT_EQ(view().Selected(), -1);
}

TEST_F(ListViewContract, TheColumnKeepsItsWidth) {
  view().SetColumnWidth(160);
  EXPECT_EQ(view().ColumnWidth(), 160);
}

TEST_F(ListViewContract, EntriesKeptElsewhereAreShownInPlaceOfItsOwn) {
  view().Select(2);
  view().ShowEntries(std::make_unique<NumberedEntries>(7));
  ASSERT_EQ(view().Count(), 7);
  EXPECT_EQ(view().Entry(7), (ListEntry{u"Entry", 2}));
  EXPECT_EQ(view().Selected(), -1);
  view().Select(4);
  EXPECT_EQ(view().Selected(), 4);
  view().Clear();
  EXPECT_EQ(view().Count(), 0);
  EXPECT_EQ(view().Selected(), -1);
  view().Append({u"Beta", 1});
  EXPECT_EQ(view().Entry(1), (ListEntry{u"Beta", 1}));
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ListViewContract, EntriesKeptElsewhereAreNotInsertedOrRemoved) {
  view().ShowEntries(std::make_unique<NumberedEntries>(7));
  EXPECT_THROW(view().Append({u"Beta", 1}), std::logic_error);
  EXPECT_THROW(view().Remove(1), std::logic_error);
  EXPECT_EQ(view().Count(), 7);
}

TEST_F(ListViewContract, ClickingAndArrowsSelectAmongEntriesKeptElsewhere) {
  view().ShowEntries(std::make_unique<NumberedEntries>(50'000));
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  user().PressKey(key::kDown);
  user().PressKey(key::kDown);
  user().PressKey(key::kUp);
  EXPECT_THAT(TakeLog(), ElementsAre("item 2", "item 3", "item 4", "item 3"));
  EXPECT_EQ(view().Selected(), 3);
}

TEST_F(ListViewContract, AfterSelectingNoneTheNextArrowSelectsAgain) {
  user().ClickEntry(view(), 2, MouseButton::kLeft);
  view().Select(-1);
  TakeLog();
  user().PressKey(key::kDown);
  EXPECT_THAT(TakeLog(), ElementsAre("item 1"));
}

class CheckedListContract : public Contract {
 protected:
  CheckedListContract() {
    view().Append({u"Beta", 1, CheckMark::kChecked});
    view().Append({u"gama", 2, CheckMark::kNone});
    view().Append({u"Žeta", 3, CheckMark::kClear});
    view().on_item_click = [this](int position) {
      log_.push_back("item " + std::to_string(position));
    };
    view().on_item_check = [this](int position) {
      const bool checked = view().Entry(position).check == CheckMark::kChecked;
      log_.push_back((checked ? "check " : "clear ") + std::to_string(position));
    };
    form_->Show();
  }

  ListView& view() { return form_->Get<ListView>("View1"); }

 private:
  std::unique_ptr<Form> form_ = toolkit().CreateForm(demo::kChecked);
};

TEST_F(CheckedListContract, AClickOnTheBoxSelectsTheEntryAndSwitchesIt) {
  user().ClickCheckBox(view(), 3);
  user().ClickCheckBox(view(), 1);
  user().ClickCheckBox(view(), 1);
  EXPECT_THAT(TakeLog(),
              ElementsAre("item 3", "check 3", "item 1", "clear 1", "item 1", "check 1"));
  EXPECT_EQ(view().Selected(), 1);
}

TEST_F(CheckedListContract, AClickBesideTheBoxLeavesIt) {
  user().ClickEntry(view(), 1, MouseButton::kLeft);
  EXPECT_THAT(TakeLog(), ElementsAre("item 1"));
  EXPECT_EQ(view().Entry(1).check, CheckMark::kChecked);
}

TEST_F(CheckedListContract, TheSpaceBarSwitchesTheSelectedEntryIfItHasABox) {
  view().SetFocus();
  view().Select(3);
  user().PressKey(key::kSpace);
  view().Select(2);
  user().PressKey(key::kSpace);
  view().Select(-1);
  user().PressKey(key::kSpace);
  EXPECT_THAT(TakeLog(), ElementsAre("check 3"));
  EXPECT_EQ(view().Entry(3), (ListEntry{u"Žeta", 3, CheckMark::kChecked}));
}

TEST_F(CheckedListContract, ASpaceBarThatAHandlerTakesSwitchesNothing) {
  view().SetFocus();
  view().Select(3);
  view().on_key_down = [](KeyDown& down) { down.code = 0; };
  user().PressKey(key::kSpace);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(CheckedListContract, CheckingFromCodeFiresNothing) {
  view().SetCheck(3, CheckMark::kChecked);
  EXPECT_EQ(view().Entry(3).check, CheckMark::kChecked);
  EXPECT_THROW(view().SetCheck(4, CheckMark::kClear), std::logic_error);
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(CheckedListContract, AnEntryKeepsItsMarkWhenOthersComeAndGo) {
  view().Insert(1, {u"Alfa", 1, CheckMark::kClear});
  view().Remove(3);
  EXPECT_EQ(view().Entry(2).check, CheckMark::kChecked);
  EXPECT_EQ(view().Entry(3).check, CheckMark::kClear);
}

TEST_F(ListViewContract, FiftyThousandEntriesAreFilledAndEmptied) {
  for (int i = 0; i < 50'000; ++i) view().Append({u"Entry", 1 + i % 3});
  EXPECT_EQ(view().Count(), 50'003);
  view().EnsureVisible(50'003);
  EXPECT_EQ(view().Entry(50'003), (ListEntry{u"Entry", 1 + 49'999 % 3}));
  view().Clear();
  EXPECT_EQ(view().Count(), 0);
}

}  // namespace
}  // namespace declarium
