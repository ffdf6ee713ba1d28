// What is done with the mouse alone: dragging and the basket's menu.
#include <algorithm>
#include <string>

#include "shell/settings.h"
#include "window/outside_fixture.h"
#include "window/user_input.h"

namespace declarium {
namespace {

using namespace window_driver;

class PointerOutside : public OutsideTest {
 protected:
  PointerOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
    WaitFor("the splash window's end", [this] { return !Program().FindForm("frmSplash"); });
    ChooseKind(2);
    ClickItem("lstType", 1, u"Type RECT");
    WaitFor("the shared items", [this] { return EntryCount(Control("lstShare")) == 2; });
    BringToFront(Main());
  }

  // A control's place in the form, in physical pixels.
  [[nodiscard]] RECT Place(std::string_view name) const {
    RECT area{};
    GetWindowRect(Control(name), &area);
    MapWindowPoints(nullptr, Main(), reinterpret_cast<POINT*>(&area), 2);
    return area;
  }
  [[nodiscard]] POINT Middle(std::string_view name) const {
    RECT area{};
    GetClientRect(Control(name), &area);
    return {area.right / 2, area.bottom / 2};
  }
  // A bar records where the pointer is when it handles the press.
  void PressBar(std::string_view bar) const {
    MovePointer(Control(bar), Middle(bar));
    HoldLeftButton();
    WaitForCapture(Control(bar));
    Ask(Main(), WM_NULL);
  }
};

TEST_F(PointerOutside, ASharedItemDraggedToTheBasketIsAdded) {
  Drag(Control("lstShare"), PlaceOfEntry(Control("lstShare"), 1), Control("lstAdd"), {20, 60});
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"3 POINTAPI"}));
  Drag(Control("lstShare"), PlaceOfEntry(Control("lstShare"), 0), Control("lstAdd"), {20, 60});
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH", u"3 POINTAPI"}));
}

TEST_F(PointerOutside, ASharedItemDroppedElsewhereIsNotAdded) {
  Drag(Control("lstShare"), PlaceOfEntry(Control("lstShare"), 1), Control("lstFind"), {20, 10});
  Drag(Control("lstShare"), PlaceOfEntry(Control("lstShare"), 0), Control("lstShare"), {20, 60});
  // What comes behind it in the message queue shows that the drops were handled.
  PressKey(Control("lstType"), VK_RETURN);
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"3 RECT"}));
}

struct BarCase {
  const char* bar;
  const char* moved;  // a control with an edge that follows the bar
  LONG RECT::* edge;
  const IntegerSetting& size;
  int sign;  // of the change of the size when the bar goes right or down
};

class BarOutside : public PointerOutside, public testing::WithParamInterface<int> {
 protected:
  static const BarCase& Bar() {
    static const BarCase bars[] = {
        {"PosMainWidth", "lstFind", &RECT::left, setting::kMainWidth, 1},
        {"PosRtbHeight", "RTB", &RECT::top, setting::kRtbHeight, -1},
        {"PosAddHeight", "lstAdd", &RECT::top, setting::kAddHeight, -1},
    };
    return bars[GetParam()];
  }
  static POINT Moved(POINT from, LONG distance) {
    if (GetParam() == 0) return {from.x + distance, from.y};
    return {from.x, from.y + distance};
  }
  [[nodiscard]] HWND TheBar() const { return Control(Bar().bar); }
  [[nodiscard]] LONG FollowingEdge() const { return Place(Bar().moved).*Bar().edge; }
  [[nodiscard]] bool IsMovedFrom(const RECT& rest, LONG distance) const {
    return Eventually([&] {
      const RECT now = Place(Bar().bar);
      return now.left - rest.left + now.top - rest.top == distance;
    });
  }
};

TEST_P(BarOutside, DraggedItMovesTheBorderWhichIsKeptForTheNextTime) {
  const LONG before = FollowingEdge();
  const POINT start = Middle(Bar().bar);
  PressBar(Bar().bar);
  const RECT rest = Place(Bar().bar);
  MovePointer(TheBar(), Moved(start, 30));
  EXPECT_TRUE(IsMovedFrom(rest, 30));
  EXPECT_EQ(FollowingEdge(), before) << "nothing but the bar moves meanwhile";
  ReleaseLeftButton();
  EXPECT_TRUE(Eventually([&] { return FollowingEdge() == before + 30; }));
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(ReadSetting(store_, Bar().size), Bar().size.default_value + 30 * Bar().sign);
}

TEST_P(BarOutside, EscapeDuringTheDragLeavesEverythingInItsPlace) {
  const POINT start = Middle(Bar().bar);
  PressBar(Bar().bar);
  const RECT rest = Place(Bar().bar);
  MovePointer(TheBar(), Moved(start, 25));
  EXPECT_TRUE(IsMovedFrom(rest, 25));
  PressTogether({VK_ESCAPE});
  EXPECT_TRUE(IsMovedFrom(rest, 0));
  ReleaseLeftButton();
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);
  EXPECT_EQ(ReadSetting(store_, Bar().size), Bar().size.default_value);
}

INSTANTIATE_TEST_SUITE_P(Bars, BarOutside, testing::Range(0, 3));

TEST_F(PointerOutside, ABarStopsAtItsLimits) {
  RECT inner{};
  GetClientRect(Main(), &inner);
  const auto left_becomes = [this](LONG left) {
    return Eventually([&] { return Place("PosMainWidth").left == left; });
  };
  PressBar("PosMainWidth");
  MovePointer(Main(), {5, 150});
  EXPECT_TRUE(left_becomes(100));
  MovePointer(Main(), {inner.right - 3, 150});
  EXPECT_TRUE(left_becomes(inner.right - 200));
  ReleaseLeftButton();
  EXPECT_TRUE(Eventually([&] { return Place("lstFind").left == inner.right - 197; }));
}

class BasketMenuOutside : public PointerOutside {
 protected:
  BasketMenuOutside() {
    DoubleClickEntry(Control("lstShare"), 0);
    WaitFor("the constant", [this] { return EntryCount(Control("lstAdd")) == 1; });
    DoubleClickEntry(Control("lstShare"), 1);
    ClickToolbar("add");
    WaitFor("the records", [this] { return EntryCount(Control("lstAdd")) == 3; });
  }
  // Opens the menu over an entry, or over the empty space behind all of them.
  void OpenMenu(int entry) const {
    const HWND basket = Control("lstAdd");
    POINT at = PlaceOfEntry(basket, std::max(entry, 0));
    if (entry < 0) at.y += 100;
    MovePointer(basket, at);
    RightClick(basket, at);
    WaitFor("the menu", [] { return IsMenuOpen(); });
  }
  static bool IsMenuOpen() {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && IsWindowVisible(menu);
  }
  void PressInMenu(char16_t access_key) const { Type(Main(), {&access_key, 1}); }
};

TEST_F(BasketMenuOutside, RemovesTheEntryUnderThePointer) {
  OpenMenu(1);
  PressInMenu(u'p');
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH", u"3 RECT"}));
}

TEST_F(BasketMenuOutside, RemovesTheGroupUnderThePointer) {
  OpenMenu(2);
  PressInMenu(u's');
  EXPECT_TRUE(EntriesBecome("lstAdd", {u"1 MAX_PATH"}));
}

TEST_F(BasketMenuOutside, RemovesEverything) {
  OpenMenu(0);
  PressInMenu(u'v');
  EXPECT_TRUE(EntriesBecome("lstAdd", {}));
  EXPECT_TRUE(Eventually([this] { return !ToolbarEnabled("copy"); }));
}

TEST_F(BasketMenuOutside, OverEmptySpaceOnlyEverythingCanBeRemoved) {
  OpenMenu(-1);
  PressInMenu(u'p');
  PressInMenu(u's');
  PressKey(Main(), VK_ESCAPE);
  WaitFor("the menu's end", [] { return !IsMenuOpen(); });
  EXPECT_EQ(Entries(Control("lstAdd")), (Rows{u"1 MAX_PATH", u"3 POINTAPI", u"3 RECT"}));
  OpenMenu(-1);
  PressInMenu(u'v');
  EXPECT_TRUE(EntriesBecome("lstAdd", {}));
}

}  // namespace
}  // namespace declarium
