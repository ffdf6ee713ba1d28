// Searching: criteria from the controls, messages, progress, and events that come in between.
#include "search/ui/search_dialog_fixture.h"

namespace declarium {
namespace {

struct SearchCase {
  std::u16string_view checks;  // Check1 to Check10
  std::vector<std::pair<std::string_view, std::u16string_view>> texts;
  std::vector<std::u16string> found;
};

TEST_F(SearchDialogTest, EveryTextAndCheckBoxGoesToItsCriterion) {
  const SearchCase cases[] = {
      // Name, anywhere and whole.
      {u"1110111011",
       {{"Text1", u"getwindow"}},
       {u"GetWindow", u"GetWindowRect", u"GetWindowText"}},
      {u"1111111011", {{"Text1", u"getwindow"}}, {u"GetWindow"}},
      {u"1111111011",
       {{"Text1", u"*"}},
       {u"LB_MAX", u"MAX_PATH", u"SW_BASE", u"GetWindow", u"GetWindowRect", u"GetWindowText",
        u"FIND", u"MSG", u"RECT"}},
      // Kinds.
      {u"1001111011", {{"Text1", u"*"}}, {u"LB_MAX", u"MAX_PATH", u"SW_BASE"}},
      {u"0101111011", {{"Text1", u"*"}}, {u"GetWindow", u"GetWindowRect", u"GetWindowText"}},
      {u"0011111011", {{"Text1", u"*"}}, {u"FIND", u"MSG", u"RECT"}},
      {u"2211111011", {{"Text1", u"*"}}, {u"FIND", u"MSG", u"RECT"}},
      // Type.
      {u"1110111011", {{"Text2", u"point"}}, {}},
      {u"1110011011", {{"Text2", u"point"}}, {u"MSG"}},
      {u"1110111011", {{"Text2", u"rect"}}, {u"GetWindowRect"}},
      // Constant.
      {u"1110111011", {{"Text3", u"max_path"}}, {u"LB_MAX", u"FIND"}},
      {u"1110111011", {{"Text3", u"path"}}, {}},
      {u"1110101011", {{"Text3", u"path"}}, {u"LB_MAX", u"FIND"}},
      // Value.
      {u"1110111011", {{"Text4", u"16"}}, {u"SW_BASE"}},
      {u"1110111001", {{"Text4", u"16"}}, {}},
      {u"1110111001", {{"Text4", u"&h10"}}, {u"SW_BASE"}},
      {u"1110111001", {{"Text4", u"26"}}, {}},
      {u"1110110001", {{"Text4", u"26"}}, {u"MAX_PATH"}},
      // Argument.
      {u"1110111011",
       {{"Text6", u"hwnd"}},
       {u"GetWindow", u"GetWindowRect", u"GetWindowText", u"MSG"}},
      {u"1110111011", {{"Text6", u"lp"}}, {}},
      {u"1110111010", {{"Text6", u"lp"}}, {u"GetWindowRect", u"GetWindowText"}},
      // Full text.
      {u"1110111011", {{"Text5", u"window base"}}, {u"SW_BASE"}},
      {u"0100111011", {{"Text5", u"longptr"}}, {u"GetWindowText"}},
      {u"0100111011", {{"Text5", u"lon"}}, {u"GetWindow", u"GetWindowRect", u"GetWindowText"}},
      {u"0100111111", {{"Text5", u"lon"}}, {}},
      {u"0100111111", {{"Text5", u"rect"}}, {u"GetWindowRect"}},
      // Together.
      {u"1110111011", {{"Text1", u"base"}, {"Text4", u"16"}}, {u"SW_BASE"}},
      {u"1110111011", {{"Text1", u"getwindow"}, {"Text4", u"16"}}, {}},
      {u"1110111011",
       {{"Text1", u"get"},
        {"Text2", u"rect"},
        {"Text3", u"max_path"},
        {"Text4", u"16"},
        {"Text5", u"string"},
        {"Text6", u"wcmd"}},
       {u"GetWindow", u"GetWindowRect", u"GetWindowText"}},
      {u"1110111011",
       {{"Text2", u"rect"}, {"Text3", u"max_path"}, {"Text4", u"16"}, {"Text6", u"wcmd"}},
       {u"LB_MAX", u"SW_BASE", u"GetWindow", u"GetWindowRect", u"FIND"}},
  };
  Open();
  int number = 0;
  for (const auto& [checks, texts, found] : cases) {
    for (const auto* box : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6"}) Write(box, u"");
    for (const auto& [box, text] : texts) Write(box, text);
    SetChecks(checks);
    PressSearch();
    EXPECT_EQ(Rows(), found) << "case " << number;
    EXPECT_EQ(CountLabel(),
              u"Nájdených: " + std::u16string(1, static_cast<char16_t>(u'0' + found.size())))
        << "case " << number;
    ++number;
  }
}

TEST_F(SearchDialogTest, RowsCarryTheirKindsIconInSearchOrder) {
  Open();
  Search("Text1", u"t");
  std::vector<ListEntry> rows;
  for (int i = 1; i <= LV1().Count(); ++i) rows.push_back(LV1().Entry(i));
  EXPECT_THAT(rows, ElementsAre(ListEntry{u"MAX_PATH", 1}, ListEntry{u"GetWindow", 2},
                                ListEntry{u"GetWindowRect", 2}, ListEntry{u"GetWindowText", 2},
                                ListEntry{u"RECT", 3}));
}

TEST_F(SearchDialogTest, EnterInATextStartsTheSearch) {
  Open();
  user_.Type(Get<TextBox>("Text1"), u"msg");
  user_.PressKey(key::kEnter);
  EXPECT_THAT(Rows(), ElementsAre(u"MSG"));
}

TEST_F(SearchDialogTest, EnterOnACheckBoxStartsTheSearch) {
  Open();
  Write("Text1", u"msg");
  user_.PressKey(Get<CheckBox>("Check9"), key::kEnter);
  EXPECT_THAT(Rows(), ElementsAre(u"MSG"));
}

TEST_F(SearchDialogTest, NoCriteriaIsReportedAndKeepsRowsAndCount) {
  Open();
  Search("Text1", u"window");
  ASSERT_EQ(LV1().Count(), 3);
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Search("Text1", u"");
  EXPECT_EQ(toolkit_.Script().LastMessage(), (Message{.text = u"Neboli zadané žiadne kritériá.",
                                                      .buttons = MessageButtons::kOk,
                                                      .icon = MessageIcon::kExclamation}));
  EXPECT_EQ(LV1().Count(), 3);
  EXPECT_EQ(CountLabel(), u"Nájdených: 3");
}

TEST_F(SearchDialogTest, TooFewItemsAreReportedAndKeepRowsAndCount) {
  Open();
  Search("Text1", u"window");
  library_ = Library();
  AddItem(library_, Kind::kConst, u"A", ConstItem(u"", u"1"));
  AddItem(library_, Kind::kType, u"A", TypeItem({u"x As Long"}));
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Search("Text1", u"a");
  EXPECT_EQ(toolkit_.Script().LastMessage(),
            (Message{.text = u"Nedostatok položiek pre vyhľadávanie.",
                     .buttons = MessageButtons::kOk,
                     .icon = MessageIcon::kExclamation}));
  EXPECT_EQ(LV1().Count(), 3);
  EXPECT_EQ(CountLabel(), u"Nájdených: 3");
}

TEST_F(SearchDialogTest, WithNoKindCheckedThereAreTooFewItems) {
  Open();
  SetChecks(u"000");
  toolkit_.Script().AnswerMessage(Answer::kOk);
  Search("Text1", u"a");
  EXPECT_THAT(toolkit_.Script().MessageTexts(),
              ElementsAre(u"Nedostatok položiek pre vyhľadávanie."));
}

TEST_F(SearchDialogTest, NoCriteriaIsReportedBeforeTooFewItems) {
  library_ = Library();
  Open();
  toolkit_.Script().AnswerMessage(Answer::kOk);
  PressSearch();
  EXPECT_THAT(toolkit_.Script().MessageTexts(), ElementsAre(u"Neboli zadané žiadne kritériá."));
}

TEST_F(SearchDialogTest, ProgressAndCountArePaintedWhileTheSearchRuns) {
  library_ = LargeLibrary(100'000);
  Open();
  auto& progress = Get<ProgressBar>("PB");
  const auto& painted = dynamic_cast<headless::HeadlessControl<ProgressBar>&>(progress);
  Search("Text1", u"V");
  EXPECT_EQ(progress.Maximum(), 99'999);
  EXPECT_EQ(progress.Value(), 0);
  EXPECT_GE(painted.TimesRefreshed(), 200);
  EXPECT_LE(painted.TimesRefreshed(), 203);
  EXPECT_GE(dynamic_cast<headless::HeadlessLabel&>(Get<Label>("labCount")).TimesRefreshed(), 2);
  EXPECT_EQ(CountLabel(), u"Nájdených: 100000");
  EXPECT_EQ(LV1().Count(), 100'000);
  EXPECT_EQ(LV1().Entry(100'000).text, u"V0099999");
}

TEST_F(SearchDialogTest, NothingIsSelectedAfterASearch) {
  Open();
  Search("Text1", u"window");
  user_.ClickEntry(LV1(), 2);
  ASSERT_EQ(LV1().Selected(), 2);
  Search("Text1", u"window");
  EXPECT_EQ(LV1().Selected(), -1);
}

TEST_F(SearchDialogTest, TheHourglassIsShownUntilTheEndOfALongSearch) {
  Open();
  toolkit_.PassTimeAtEachLook(20);
  Search("Text1", u"window");
  EXPECT_THAT(toolkit_.Pointers(), ElementsAre(MousePointer::kDefault, MousePointer::kHourglass,
                                               MousePointer::kDefault));
}

TEST_F(SearchDialogTest, AShortSearchLeavesThePointer) {
  library_ = LargeLibrary(100'000);
  Open();
  Search("Text1", u"V");
  EXPECT_THAT(toolkit_.Pointers(), ElementsAre(MousePointer::kDefault));
}

TEST_F(SearchDialogTest, ASecondClickWhileBusyDoesNothing) {
  Open();
  Search("Text1", u"window");
  searches_and_lookups_ = 0;
  bool clicked = false;
  toolkit_.Post([&] {
    EXPECT_EQ(LV1().Count(), 0);
    Write("Text1", u"rect");
    PressSearch();
    clicked = true;
  });
  PressSearch();
  EXPECT_TRUE(clicked);
  EXPECT_EQ(searches_and_lookups_, 1);
  EXPECT_THAT(Rows(), ElementsAre(u"GetWindow", u"GetWindowRect", u"GetWindowText"));
  PressSearch();
  EXPECT_THAT(Rows(), ElementsAre(u"GetWindowRect", u"RECT"));
}

TEST_F(SearchDialogTest, AShortListGoesWithoutTheWaitWindow) {
  Open();
  Search("Text1", u"window");
  bool waited = false;
  toolkit_.Post([&] { waited = FindForm("frmWait") != nullptr; });
  PressSearch();
  EXPECT_FALSE(waited);
}

TEST_F(SearchDialogTest, TheWaitWindowStandsWhileALongListGoes) {
  library_ = LargeLibrary(6'000);
  Open();
  Search("Text1", u"V");
  bool seen = false;
  toolkit_.Post([&] {
    auto* wait = FindForm("frmWait");
    ASSERT_NE(wait, nullptr);
    seen = true;
    EXPECT_TRUE(wait->Visible());
    EXPECT_EQ(wait->Get<Label>("Label1").Caption(), u"Uvoľnuje sa pamäť.");
    EXPECT_EQ(wait->Get<Label>("Label2").Caption(), u"Môže to trvať niekoľko sekúnd.");
    EXPECT_EQ(wait->Get<Label>("Label3").Caption(), u"Čakajte prosím...");
    EXPECT_EQ(LV1().Count(), 6'000);
  });
  Search("Text1", u"V0000001");
  EXPECT_TRUE(seen);
  EXPECT_EQ(FindForm("frmWait"), nullptr);
  EXPECT_THAT(Rows(), ElementsAre(u"V0000001"));
}

TEST_F(SearchDialogTest, AClickWhileTheWaitWindowIsPaintedListsEachHitOnce) {
  library_ = LargeLibrary(6'000);
  Open();
  Search("Text1", u"V");
  toolkit_.Post([&] { PressSearch(); });
  Search("Text1", u"V000000");
  EXPECT_EQ(LV1().Count(), 10);
  toolkit_.ProcessPendingEvents();
  EXPECT_EQ(FindForm("frmWait"), nullptr);
}

TEST_F(SearchDialogTest, AnotherLibraryOpenedWhileResultsAreClearedIsForTheNextSearch) {
  Open();
  Search("Text1", u"window");
  toolkit_.Post([&] {
    library_ = Library();
    AddItem(library_, Kind::kConst, u"WINDOW_A", ConstItem(u"", u"1"));
    AddItem(library_, Kind::kConst, u"WINDOW_B", ConstItem(u"", u"2"));
  });
  PressSearch();
  EXPECT_THAT(Rows(), ElementsAre(u"GetWindow", u"GetWindowRect", u"GetWindowText"));
  PressSearch();
  EXPECT_THAT(Rows(), ElementsAre(u"WINDOW_A", u"WINDOW_B"));
}

TEST_F(SearchDialogTest, ClosingWhileResultsAreClearedEndsThere) {
  Open();
  Search("Text1", u"window");
  toolkit_.Post([&] { user_.Close(Find()); });
  PressSearch();
  EXPECT_FALSE(dialog_.IsOpen());
  EXPECT_EQ(stored_, u"1110111011");
  Open();
  Search("Text1", u"msg");
  EXPECT_THAT(Rows(), ElementsAre(u"MSG"));
}

TEST_F(SearchDialogTest, ReopeningWhileResultsAreClearedGivesANewEmptyDialog) {
  Open();
  Search("Text1", u"window");
  toolkit_.Post([&] {
    user_.Close(Find());
    Open();
  });
  PressSearch();
  EXPECT_TRUE(dialog_.IsOpen());
  EXPECT_EQ(LV1().Count(), 0);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), u"");
  Search("Text1", u"msg");
  EXPECT_THAT(Rows(), ElementsAre(u"MSG"));
}

TEST_F(SearchDialogTest, ClosingWithALongListHidesTheDialogBehindTheWaitWindow) {
  library_ = LargeLibrary(6'000);
  Open();
  Search("Text1", u"V");
  bool seen = false;
  toolkit_.Post([&] {
    seen = true;
    EXPECT_FALSE(Find().Visible());
    EXPECT_NE(FindForm("frmWait"), nullptr);
  });
  user_.Close(Find());
  EXPECT_TRUE(seen);
  EXPECT_FALSE(dialog_.IsOpen());
  ASSERT_NE(FindForm("frmWait"), nullptr);
  toolkit_.ProcessPendingEvents();
  EXPECT_EQ(FindForm("frmWait"), nullptr);
}

TEST_F(SearchDialogTest, ClosingWithAShortListShowsNoWaitWindow) {
  Open();
  Search("Text1", u"window");
  user_.Close(Find());
  EXPECT_EQ(FindForm("frmWait"), nullptr);
}

TEST_F(SearchDialogTest, ReopeningWhileALongListGoesGivesANewDialog) {
  library_ = LargeLibrary(6'000);
  Open();
  Search("Text1", u"V");
  toolkit_.Post([&] { Open(); });
  user_.Close(Find());
  EXPECT_TRUE(dialog_.IsOpen());
  EXPECT_EQ(LV1().Count(), 0);
  Search("Text1", u"V0000001");
  EXPECT_THAT(Rows(), ElementsAre(u"V0000001"));
}

}  // namespace
}  // namespace declarium
