#include "toolkit/contract.h"

namespace declarium {
namespace {

// The same promises for both kinds of lists.
class RowListContract : public ShownContract, public ::testing::WithParamInterface<const char*> {
 protected:
  RowListContract() {
    list().Clear();
    list().AddRow(u"Alfa");
    list().AddRow(u"beta");
    list().AddRow(u"Žeta");
    list().on_click = [this] { clicks_.push_back(list().ListIndex()); };
  }

  RowList& list() { return Get<RowList>(GetParam()); }
  std::vector<int> clicks_;
};

INSTANTIATE_TEST_SUITE_P(Both, RowListContract, ::testing::Values("List1", "Combo1"));

TEST_P(RowListContract, RowsKeepTheirOrderAndSpelling) {
  EXPECT_EQ(list().RowCount(), 3);
  EXPECT_EQ(list().Row(0), u"Alfa");
  EXPECT_EQ(list().Row(2), u"Žeta");
  EXPECT_EQ(list().Row(3), u"");
  EXPECT_EQ(list().Row(-1), u"");
  EXPECT_EQ(list().ListIndex(), -1);
  EXPECT_EQ(list().Text(), u"");
}

TEST_P(RowListContract, SettingTheIndexFiresClick) {
  EXPECT_TRUE(list().SetListIndex(1));
  EXPECT_THAT(clicks_, ElementsAre(1));
  EXPECT_EQ(list().Text(), u"beta");
}

TEST_P(RowListContract, SettingTheIndexItHasFiresNothing) {
  list().SetListIndex(1);
  EXPECT_TRUE(list().SetListIndex(1));
  EXPECT_THAT(clicks_, ElementsAre(1));
}

TEST_P(RowListContract, SettingMinusOneFiresClickAndClearsTheSelection) {
  list().SetListIndex(1);
  EXPECT_TRUE(list().SetListIndex(-1));
  EXPECT_THAT(clicks_, ElementsAre(1, -1));
  EXPECT_EQ(list().Text(), u"");
  EXPECT_TRUE(list().SetListIndex(-1));
  EXPECT_THAT(clicks_, ElementsAre(1, -1));
}

TEST_P(RowListContract, AnIndexWithoutARowIsRefused) {
  list().SetListIndex(1);
  EXPECT_FALSE(list().SetListIndex(3));
  EXPECT_FALSE(list().SetListIndex(-2));
  EXPECT_EQ(list().ListIndex(), 1);
  EXPECT_THAT(clicks_, ElementsAre(1));
}

TEST_P(RowListContract, SettingTheTextSelectsTheRowOfExactlyThatText) {
  list().AddRow(u"BETA");
  EXPECT_TRUE(list().SetText(u"BETA"));
  EXPECT_EQ(list().ListIndex(), 3);
  EXPECT_TRUE(list().SetText(u"beta"));
  EXPECT_EQ(list().ListIndex(), 1);
  EXPECT_THAT(clicks_, ElementsAre(3, 1));
}

TEST_P(RowListContract, SettingATextWithoutARowChangesNothing) {
  list().SetListIndex(1);
  EXPECT_FALSE(list().SetText(u"bet"));
  EXPECT_FALSE(list().SetText(u"Beta"));
  EXPECT_EQ(list().ListIndex(), 1);
  EXPECT_THAT(clicks_, ElementsAre(1));
}

TEST_P(RowListContract, TheUsersChoiceFiresClickOnce) {
  user().ChooseRow(list(), 2);
  EXPECT_THAT(clicks_, ElementsAre(2));
  EXPECT_TRUE(list().HasFocus());
}

TEST_P(RowListContract, ClearingFiresNothing) {
  list().SetListIndex(1);
  list().Clear();
  EXPECT_EQ(list().RowCount(), 0);
  EXPECT_EQ(list().ListIndex(), -1);
  EXPECT_THAT(clicks_, ElementsAre(1));
}

TEST_P(RowListContract, AClickMayRefillTheList) {
  list().on_click = [this] {
    if (list().ListIndex() != 2) return;
    list().Clear();
    list().AddRow(u"nová");
  };
  user().ChooseRow(list(), 2);
  EXPECT_EQ(list().RowCount(), 1);
  EXPECT_EQ(list().ListIndex(), -1);
}

TEST_P(RowListContract, ThirtyThousandRowsAreAddedAtOnce) {
  std::vector<std::u16string> rows;
  for (int i = 0; i < 30'000; ++i) rows.push_back(u"Riadok" + std::u16string(1, u'a' + i % 26));
  list().Clear();
  list().AddRows(std::vector<std::u16string_view>(rows.begin(), rows.end()));
  EXPECT_EQ(list().RowCount(), 30'000);
  EXPECT_EQ(list().Row(29'999), rows.back());
  EXPECT_EQ(list().ListIndex(), -1);
  EXPECT_THAT(clicks_, IsEmpty());
}

TEST_P(RowListContract, AHiddenListIsFilledAndSelectedAllTheSame) {
  list().SetVisible(false);
  list().AddRow(u"delta");
  EXPECT_TRUE(list().SetListIndex(3));
  EXPECT_EQ(list().Text(), u"delta");
  list().SetVisible(true);
  EXPECT_EQ(list().ListIndex(), 3);
}

TEST_F(ShownContract, AComboBoxHasTheRowsOfItsTable) {
  auto& combo = Get<ComboBox>("Combo1");
  EXPECT_EQ(combo.RowCount(), 3);
  EXPECT_EQ(combo.Row(1), u"Declare");
}

TEST_F(ShownContract, ArrowKeysMoveTheRowOfAListBox) {
  auto& list = Get<ListBox>("List1");
  list.AddRow(u"a");
  list.AddRow(u"b");
  list.SetListIndex(0);
  list.on_click = Log("click");
  list.SetFocus();
  user().PressKey(key::kDown);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THAT(TakeLog(), ElementsAre("click"));
}

TEST_F(ShownContract, ADoubleClickFollowsTheClick) {
  auto& list = Get<ListBox>("List1");
  list.AddRow(u"a");
  list.on_click = Log("click");
  list.on_double_click = Log("double");
  user().ChooseRow(list, 0);
  EXPECT_THAT(TakeLog(), ElementsAre("click"));
  user().DoubleClick(list);
  EXPECT_THAT(TakeLog(), ::testing::Contains("double"));
}

}  // namespace
}  // namespace declarium
