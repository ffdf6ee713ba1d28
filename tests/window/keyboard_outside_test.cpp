// The keyboard itself: shortcuts and the bars between the panes.
#include <cstdlib>
#include <string>
#include <vector>

#include "window/outside_fixture.h"
#include "window/user_input.h"

namespace declarium {
namespace {

using namespace window_driver;

class KeyboardOutside : public OutsideTest {
 protected:
  KeyboardOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
    WaitFor("the splash window's end", [this] { return !Program().FindForm("frmSplash"); });
    ChooseKind(0);
    ClickItem("lstConst", 1, u"Const B");
    BringToFront(Main());
  }
  [[nodiscard]] HWND FocusedWindow() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(Main(), nullptr), &info);
    return info.hwndFocus;
  }
  void Rename() {
    PressTogether({VK_F2});
    AnswerText(u"Okná");
    ASSERT_TRUE(CaptionBecomes(u"Okná - Declarium 3.0"));
    BringToFront(Main());
  }
  // Waits for a file dialog and leaves it.
  void CancelFileDialog() const { PressInDialog(Program().Dialog(), IDCANCEL); }
};

TEST_F(KeyboardOutside, F2RenamesAndCtrlSSaves) {
  Rename();
  PressTogether({VK_CONTROL, 'S'});
  EXPECT_TRUE(ComesToHold("win.api", WinLibrary("Okn\xe1")));
}

TEST_F(KeyboardOutside, CtrlShiftSSavesUnderAnotherName) {
  PressTogether({VK_CONTROL, VK_SHIFT, 'S'});
  AnswerFile("copy.api");
  EXPECT_TRUE(ComesToHold("copy.api", WinLibrary()));
}

TEST_F(KeyboardOutside, CtrlNAsksForATitle) {
  PressTogether({VK_CONTROL, 'N'});
  const HWND input = Program().Form("frmInput");
  EXPECT_EQ(TextOf(FindControl(input, "Label1")), u"Zadajte názov databázy");
}

TEST_F(KeyboardOutside, CtrlOCtrlIAndCtrlEAskForFiles) {
  for (const int key : {'O', 'I', 'E'}) {
    BringToFront(Main());
    PressTogether({VK_CONTROL, key});
    CancelFileDialog();
  }
  EXPECT_EQ(Caption(), u"Win - Declarium 3.0");
}

TEST_F(KeyboardOutside, CtrlDAsksForDeclarations) {
  PressTogether({VK_CONTROL, 'D'});
  EXPECT_NE(Program().Form("frmAdd"), nullptr);
}

TEST_F(KeyboardOutside, CtrlDeleteDeletesTheSelectedItem) {
  PressTogether({VK_CONTROL, VK_DELETE});
  AnswerMessage(u"Naozaj chcete natrvalo odtrániť položku 'B' z databázy?", IDYES);
  EXPECT_TRUE(ListBecomes("lstConst", {u"A", u"MAX_PATH"}));
}

TEST_F(KeyboardOutside, CtrlWClosesTheWindow) {
  PressTogether({VK_CONTROL, 'W'});
  EXPECT_EQ(Program().WaitForEnd(), 0);
}

TEST_F(KeyboardOutside, TheTabKeyReachesEveryControlAndComesBack) {
  const HWND first = Control("txtInput");
  Click(first, {3, 3});
  WaitFor("the focus", [&] { return FocusedWindow() == first; });
  std::vector<std::string> reached;
  HWND focus = first;
  do {
    PressTogether({VK_TAB});
    WaitFor("another focus", [&] { return FocusedWindow() != focus; });
    focus = FocusedWindow();
    reached.push_back(NameOf(focus));
  } while (focus != first && reached.size() < 30);
  EXPECT_EQ(reached,
            (std::vector<std::string>{"lstConst", "txtFind", "lstFind", "lstAdd", "lstShare", "RTB",
                                      "PosMainWidth", "PosAddHeight", "PosRtbHeight", "Toolbar1",
                                      "cmbDatabase", "cmbSelector", "cmbRange", "txtInput"}));
}

class BarByKeys : public KeyboardOutside {
 protected:
  BarByKeys() {
    // A press that moves nothing gives the bar the focus.
    Click(Bar(), {1, 20});
    WaitFor("the focus", [this] { return FocusedWindow() == Bar(); });
  }
  [[nodiscard]] HWND Bar() const { return Control("PosMainWidth"); }
  [[nodiscard]] LONG LeftOf(std::string_view name) const {
    RECT area{};
    GetWindowRect(Control(name), &area);
    return area.left;
  }
  // The arrow key, until the bar is so many physical pixels away from its place.
  void MoveBar(int key, LONG distance) const {
    const LONG rest = LeftOf("PosMainWidth");
    for (LONG now = rest; std::abs(now - rest) < distance;) {
      PressTogether({key});
      WaitFor("the bar's move", [&] { return LeftOf("PosMainWidth") != now; });
      now = LeftOf("PosMainWidth");
    }
  }
};

TEST_F(BarByKeys, ArrowsMoveItAndEnterMovesTheBorder) {
  const LONG before = LeftOf("lstFind");
  MoveBar(VK_RIGHT, 16);
  EXPECT_EQ(LeftOf("lstFind"), before);
  const LONG bar = LeftOf("PosMainWidth");
  PressTogether({VK_RETURN});
  EXPECT_TRUE(Eventually([&] { return LeftOf("lstFind") > before; }));
  EXPECT_EQ(LeftOf("PosMainWidth"), bar);
}

TEST_F(BarByKeys, EscapePutsItBack) {
  const LONG bar = LeftOf("PosMainWidth"), border = LeftOf("lstFind");
  MoveBar(VK_LEFT, 16);
  PressTogether({VK_ESCAPE});
  EXPECT_TRUE(Eventually([&] { return LeftOf("PosMainWidth") == bar; }));
  PressTogether({VK_TAB});
  EXPECT_TRUE(Eventually([this] { return FocusedWindow() != Bar(); }));
  EXPECT_EQ(LeftOf("lstFind"), border);
}

}  // namespace
}  // namespace declarium
