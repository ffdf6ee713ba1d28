// The search dialog beside the main window, from outside.
#include "window/search_outside.h"

#include <vector>

namespace declarium {
namespace {

using namespace window_driver;

struct Criterion {
  const char* box;
  std::u16string_view text;
  Rows hits;
};

const std::vector<Criterion> kCriteria = {
    {"Text1", u"get", {u"2 GetTickCount", u"2 GetWindow"}},
    {"Text2", u"pointapi", {u"2 GetWindow", u"3 RECT"}},
    {"Text3", u"max_path", {u"3 RECT"}},
    {"Text4", u"260", {u"1 MAX_PATH"}},
    {"Text6", u"y", {u"3 POINTAPI"}},
    {"Text5", u"kernel32", {u"2 Beep", u"2 GetTickCount"}},
};

TEST_F(SearchOutside, EveryCriterionAloneFindsItsItems) {
  Open();
  for (const auto& [box, text, hits] : kCriteria) {
    SetText(In(box), text);
    Search();
    EXPECT_TRUE(ResultsBecome(hits)) << box;
    EXPECT_EQ(TextOf(In("labCount")), u"Nájdených: " + std::u16string(1, u'0' + hits.size()));
    EXPECT_EQ(SelectedEntry(In("LV1")), -1);
    SetText(In(box), u"");
  }
}

TEST_F(SearchOutside, AllCriteriaTogetherFindWhatHasTheNameToo) {
  Open();
  for (const auto& [box, text, hits] : kCriteria) SetText(In(box), text);
  SetText(In("Text1"), u"rect");
  Search();
  EXPECT_TRUE(ResultsBecome({u"3 RECT"}));
}

TEST_F(SearchOutside, EnterSearchesAndEscapeCloses) {
  Open();
  Type(In("Text1"), u"rect");
  PressKey(In("Text1"), VK_RETURN);
  EXPECT_TRUE(ResultsBecome({u"3 RECT"}));
  PressKey(In("Text1"), VK_ESCAPE);
  EXPECT_TRUE(Eventually([this] { return Program().FindForm("frmFind") == nullptr; }));
  EXPECT_TRUE(Program().Runs());
}

TEST_F(SearchOutside, AClickedHitIsShownInTheMainWindowAndADoubleClickedOneAdded) {
  Open();
  SetText(In("Text1"), u"rect");
  Search();
  ASSERT_TRUE(ResultsBecome({u"3 RECT"}));
  ClickEntry(In("LV1"), 0);
  EXPECT_TRUE(CodeBecomes(u"Type RECT\r\n\ta As POINTAPI\r\n\ts As String * MAX_PATH\r\nEnd Type"));
  EXPECT_TRUE(EntriesBecome("lstShare", {u"1 MAX_PATH", u"3 POINTAPI"}));
  EXPECT_EQ(EntryCount(Control("lstAdd")), 0);
  DoubleClickEntry(In("LV1"), 0);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"3 RECT"}));
}

TEST_F(SearchOutside, WithoutCriteriaTheSearchSaysSo) {
  Open();
  Search();
  AnswerMessage(u"Neboli zadané žiadne kritériá.", IDOK);
  for (const char* kind : {"Check1", "Check2", "Check3"}) PressButton(In(kind));
  ASSERT_TRUE(Eventually([this] { return Boxes().starts_with("000"); }));
  SetText(In("Text1"), u"rect");
  Search();
  AnswerMessage(u"Nedostatok položiek pre vyhľadávanie.", IDOK);
}

TEST_F(SearchOutside, ReopenedTheDialogHasItsCheckBoxesButNoTextsAndNoResults) {
  Open();
  EXPECT_EQ(Boxes(), "1110111011");
  SetText(In("Text1"), u"rect");
  Search();
  ASSERT_TRUE(ResultsBecome({u"3 RECT"}));
  PressButton(In("Check1"));
  PressButton(In("Check8"));
  ASSERT_TRUE(Eventually([this] { return Boxes() == "0110111111"; }));
  CloseDialog();
  EXPECT_EQ(Stored(), u"0110111111");
  OpenDialog();
  EXPECT_EQ(Boxes(), "0110111111");
  EXPECT_EQ(TextOf(In("Text1")), u"");
  EXPECT_EQ(EntryCount(In("LV1")), 0);
  EXPECT_EQ(TextOf(In("labCount")), u"Nájdených: 0");
}

TEST_F(SearchOutside, WhatIsNoCheckBoxValueInTheSettingsHasItsDefault) {
  WriteSetting(store_, setting::kFindCheckBox, u"02x9");
  Open();
  EXPECT_EQ(Boxes(), "0210111011");
  CloseDialog();
  EXPECT_EQ(Stored(), u"0210111011");
}

TEST_F(SearchOutside, AHitWhoseItemWasDeletedShowsNothing) {
  Open();
  SetText(In("Text1"), u"get");
  Search();
  ASSERT_TRUE(ResultsBecome({u"2 GetTickCount", u"2 GetWindow"}));
  ClickItem("lstDeclare", 1, u"Declare Function GetTickCount");
  ChooseMenu("mnuDeleteDbItem");
  AnswerMessage(u"Naozaj chcete natrvalo odtrániť položku 'GetTickCount' z databázy?", IDYES);
  ASSERT_TRUE(ListBecomes("lstDeclare", {u"Beep", u"GetWindow"}));
  ClickEntry(In("LV1"), 1);
  ASSERT_TRUE(EntriesBecome("lstShare", {u"3 POINTAPI", u"3 RECT"}));
  const auto shown = TextOf(Control("RTB"));
  DoubleClickEntry(In("LV1"), 0);
  ASSERT_TRUE(Eventually([this] { return SelectedEntry(In("LV1")) == 0; }));
  EXPECT_EQ(TextOf(Control("RTB")), shown);
  EXPECT_EQ(EntryCount(Control("lstAdd")), 0);
}

TEST_F(SearchOutside, ASearchAfterSwitchingTheLibrarySearchesTheNewOne) {
  Put("z.api", std::string_view("Zed\x02"
                                "C\0D\x01\x01\x02\x0e"
                                "3\0\x0e"
                                "4\x01\x01",
                                17));
  Open();
  SetText(In("Text1"), u"*");
  Search();
  ASSERT_TRUE(Eventually([this] { return EntryCount(In("LV1")) == 8; }));
  ChooseRow(Control("cmbDatabase"), 1);
  ASSERT_TRUE(CaptionBecomes(u"Zed - Declarium 3.0"));
  EXPECT_EQ(EntryCount(In("LV1")), 8) << "results stay until the next search";
  Search();
  EXPECT_TRUE(ResultsBecome({u"1 C", u"1 D"}));
}

TEST_F(SearchOutside, ClosingTheMainWindowClosesTheDialogAndKeepsItsCheckBoxes) {
  Open();
  PressButton(In("Check2"));
  ASSERT_TRUE(Eventually([this] { return Boxes().starts_with("101"); }));
  Close();
  EXPECT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(Stored(), u"1010111011");
}

}  // namespace
}  // namespace declarium
