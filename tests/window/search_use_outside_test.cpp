// Using the search dialog from outside: keys, its place on the screen, what it is read out as, long
// results, and what happens while earlier results are cleared.
#include <set>
#include <string>
#include <utility>

#include "window/accessible_name.h"
#include "window/search_outside.h"

namespace declarium {
namespace {

using namespace window_driver;

constexpr int kHits = 50'000;

// So many constants, V00000 and on.
std::string LongLibrary() {
  std::string names, items;
  for (int i = 0; i < kHits; ++i) {
    const std::string number = std::to_string(i);
    if (i > 0) names += '\0', items += '\0';
    names += "V" + std::string(5 - number.size(), '0') + number;
    items += "Long\x0e" + number;
  }
  return "Long\x02" + names + "\x01\x01\x02" + items + "\x01\x01";
}

// Constants whose values take long to search for kSlowText, which is at their end.
constexpr int kSlowHits = 1'500;
const std::string kSlowText = std::string(100, 'a') + "?b";

std::string SlowLibrary() {
  std::string names, items;
  for (int i = 0; i < kSlowHits; ++i) {
    const std::string separator(i > 0 ? 1 : 0, '\0');
    names += separator + "V" + std::to_string(10'000 + i);
    items += separator + "\x0e" + std::string(1'500, 'a') + "b";
  }
  return "Slow\x02" + names + "\x01\x01\x02" + items + "\x01\x01";
}

// What the window shows, without asking its program, which is busy.
std::u16string ShownBy(HWND window) {
  wchar_t text[64] = L"";
  const int size = InternalGetWindowText(window, text, 64);
  return {text, text + size};
}

RECT Place(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

RECT WorkArea(HWND window) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

void ExpectOnScreen(HWND window) {
  const RECT place = Place(window), work = WorkArea(window);
  EXPECT_GE(place.left, work.left);
  EXPECT_GE(place.top, work.top);
  EXPECT_LE(place.right, work.right);
  EXPECT_LE(place.bottom, work.bottom);
}

class SearchInUse : public SearchOutside {
 protected:
  void FindGet() {
    SetText(In("Text1"), u"get");
    Search();
    ASSERT_TRUE(ResultsBecome({u"2 GetTickCount", u"2 GetWindow"}));
  }
  [[nodiscard]] bool HitsBecome(int count) const {
    return Eventually([&] { return EntryCount(In("LV1")) == count; });
  }
  [[nodiscard]] bool DialogIsGone() const {
    return Eventually([this] {
      return Program().FindForm("frmFind") == nullptr && Program().FindForm("frmWait") == nullptr;
    });
  }
  void PostChosenLibrary(int row) const {
    const HWND combo = Control("cmbDatabase");
    PostMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    PostMessageW(Main(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
  }
};

TEST_F(SearchInUse, ArrowsShowTheHitAndEnterAddsIt) {
  Open();
  FindGet();
  PressKey(In("Command2"), VK_TAB);
  PressKey(In("Command1"), VK_TAB);
  PressKey(In("LV1"), VK_DOWN);
  EXPECT_TRUE(CodeBecomes(u"Declare Function GetTickCount Lib \"kernel32\" () As Long"));
  PressKey(In("LV1"), VK_DOWN);
  EXPECT_TRUE(EntriesBecome("lstShare", {u"3 POINTAPI", u"3 RECT"}));
  EXPECT_TRUE(TextOf(Control("RTB")).starts_with(u"Declare Function GetWindow "));
  EXPECT_EQ(EntryCount(Control("lstAdd")), 0);
  PressKey(In("LV1"), VK_RETURN);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"2 GetWindow"}));
  EXPECT_EQ(EntryCount(In("LV1")), 2) << "Enter in the list is no search";
  PressKey(In("LV1"), VK_ESCAPE);
  EXPECT_TRUE(DialogIsGone());
}

TEST_F(SearchInUse, ADoubleClickOnEmptySpaceAddsNothing) {
  Open();
  FindGet();
  ClickEntry(In("LV1"), 1);
  ASSERT_TRUE(EntriesBecome("lstShare", {u"3 POINTAPI", u"3 RECT"}));
  RECT inside{};
  GetClientRect(In("LV1"), &inside);
  DoubleClick(In("LV1"), {inside.right / 2, inside.bottom - 4});
  DoubleClickEntry(In("LV1"), 0);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"2 GetTickCount"}));
}

TEST_F(SearchInUse, TheDialogOpensOnTheScreenWhereverTheMainWindowStands) {
  Open();
  CloseDialog();
  const std::pair<int, int> places[] = {{-400, -300}, {1200, 950}, {-400, 950}, {3000, 2000}};
  for (const auto& [left, top] : places) {
    SetWindowPos(Main(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    OpenDialog();
    ExpectOnScreen(Find());
    CloseDialog();
  }
}

TEST_F(SearchInUse, TheDialogOpensOnTheScreenWhenTheStoredPlaceIsNowhere) {
  WriteSetting(store_, setting::kSizeSaved, 1);
  WriteSetting(store_, setting::kLeftEdge, 9000);
  WriteSetting(store_, setting::kUpperEdge, 9000);
  WriteSetting(store_, setting::kRightEdge, 9600);
  WriteSetting(store_, setting::kLowerEdge, 9500);
  Open();
  ExpectOnScreen(Find());
}

TEST_F(SearchInUse, TheResultsGrowWithTheDialog) {
  Open();
  const RECT dialog = Place(Find()), list = Place(In("LV1"));
  SetWindowPos(Find(), nullptr, 0, 0, dialog.right - dialog.left + 60,
               dialog.bottom - dialog.top + 80, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_TRUE(Eventually([&] {
    const RECT now = Place(In("LV1"));
    return now.right - now.left == list.right - list.left + 60 &&
           now.bottom - now.top == list.bottom - list.top + 80;
  }));
}

TEST_F(SearchInUse, TextBoxesAreReadOutWithTheirLabels) {
  Open();
  const std::pair<const char*, const char*> boxes[] = {{"Text1", "Label1"}, {"Text2", "Label2"},
                                                       {"Text3", "Label3"}, {"Text4", "Label4"},
                                                       {"Text5", "Label5"}, {"Text6", "Label6"}};
  for (const auto& [box, label] : boxes) {
    EXPECT_EQ(AccessibleNameOf(In(box)), TextOf(In(label))) << box;
  }
  EXPECT_EQ(AccessibleNameOf(In("Check9")), u"Hľadať ako číslo");
  EXPECT_EQ(AccessibleNameOf(In("Command2")), u"Hľadať");
}

TEST_F(SearchInUse, FiftyThousandHitsAreListedFreedBySearchingAndFreedByClosing) {
  Put("long.api", LongLibrary());
  StartAndShow(L"long.api");
  OpenDialog();
  SetText(In("Text1"), u"v");
  Search();
  ASSERT_TRUE(HitsBecome(kHits));
  EXPECT_EQ(TextOf(In("labCount")), u"Nájdených: 50000");
  ClickEntry(In("LV1"), kHits - 1);
  EXPECT_TRUE(CodeBecomes(u"Const V49999 As Long = 49999"));
  SetText(In("Text1"), u"v00001");
  Search();
  ASSERT_TRUE(HitsBecome(1));
  EXPECT_TRUE(ResultsBecome({u"1 V00001"}));
  EXPECT_TRUE(Eventually([this] { return Program().FindForm("frmWait") == nullptr; }));
  SetText(In("Text1"), u"v");
  Search();
  ASSERT_TRUE(HitsBecome(kHits));
  PressButton(In("Command1"));
  EXPECT_TRUE(DialogIsGone());
  OpenDialog();
  EXPECT_EQ(EntryCount(In("LV1")), 0);
}

TEST_F(SearchInUse, TheCountMovesWhileALongSearchRuns) {
  Put("slow.api", SlowLibrary());
  StartAndShow(L"slow.api");
  OpenDialog();
  SetText(In("Text5"), std::u16string(kSlowText.begin(), kSlowText.end()));
  const HWND count = In("labCount");
  std::set<std::u16string> shown;
  Search();
  EXPECT_TRUE(Eventually([&] {
    shown.insert(ShownBy(count));
    return shown.contains(u"Nájdených: 1500");
  }));
  EXPECT_GE(shown.size(), 4U) << "the first, the last, and some between them";
  EXPECT_TRUE(HitsBecome(kSlowHits));
}

TEST_F(SearchInUse, ASecondClickWhileEarlierResultsAreClearedDoesNothing) {
  Open();
  FindGet();
  {
    const Standstill standstill(Find());
    Search();
    PostMessageW(In("Text1"), EM_SETSEL, 0, -1);
    PostMessageW(In("Text1"), WM_CLEAR, 0, 0);
    Search();
  }
  ASSERT_TRUE(Eventually([this] { return TextOf(In("Text1")).empty(); }));
  EXPECT_TRUE(ResultsBecome({u"2 GetTickCount", u"2 GetWindow"}));
  EXPECT_EQ(Program().FindDialog(), nullptr);
  Search();
  AnswerMessage(u"Neboli zadané žiadne kritériá.", IDOK);
}

TEST_F(SearchInUse, TheLibraryMayBeSwitchedWhileEarlierResultsAreCleared) {
  Put("z.api", std::string_view("Zed\x02"
                                "GetC\0GetD\x01\x01\x02\x0e"
                                "3\0\x0e"
                                "4\x01\x01",
                                23));
  Open();
  FindGet();
  {
    const Standstill standstill(Find());
    Search();
    PostChosenLibrary(1);
  }
  ASSERT_TRUE(CaptionBecomes(u"Zed - Declarium 3.0"));
  EXPECT_TRUE(ResultsBecome({u"2 GetTickCount", u"2 GetWindow"})) << "found in the earlier library";
  ClickEntry(In("LV1"), 1);
  ASSERT_TRUE(Eventually([this] { return SelectedEntry(In("LV1")) == 1; }));
  EXPECT_EQ(TextOf(Control("RTB")), u"") << "the library has no such item any more";
  Search();
  EXPECT_TRUE(ResultsBecome({u"1 GetC", u"1 GetD"}));
}

}  // namespace
}  // namespace declarium
