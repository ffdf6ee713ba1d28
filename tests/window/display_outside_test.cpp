// The screen changes while the program runs: its resolution and the system's colors.
#include <array>
#include <map>
#include <string>

#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;

const char* const kControls[] = {"Toolbar1", "cmbDatabase",  "cmbSelector",  "cmbRange",
                                 "txtInput", "lstConst",     "lstDeclare",   "lstType",
                                 "txtFind",  "lstFind",      "lstAdd",       "lstShare",
                                 "RTB",      "PosMainWidth", "PosRtbHeight", "PosAddHeight"};

class DisplayOutside : public OutsideTest {
 protected:
  DisplayOutside() {
    Put("win.api", WinLibrary());
    StartAndShow(L"win.api");
    WaitFor("the splash window's end", [this] { return !Program().FindForm("frmSplash"); });
  }

  // The notification for a window that comes to a screen of another resolution.
  void ChangeResolution(int dpi, const RECT& place) const {
    ChangeResolutionOf(Main(), dpi, place);
  }
  [[nodiscard]] RECT WindowPlace() const {
    RECT place{};
    GetWindowRect(Main(), &place);
    return place;
  }
  [[nodiscard]] std::map<std::string, std::u16string> Places() const {
    std::map<std::string, std::u16string> places;
    for (const char* name : kControls) {
      RECT area{};
      GetWindowRect(Control(name), &area);
      MapWindowPoints(nullptr, Main(), reinterpret_cast<POINT*>(&area), 2);
      std::string text;
      for (const LONG edge : {area.left, area.top, area.right, area.bottom}) {
        text += std::to_string(edge) + " ";
      }
      places[name] = {text.begin(), text.end()};
    }
    return places;
  }
  [[nodiscard]] SIZE SizeOf(std::string_view name) const {
    RECT area{};
    GetWindowRect(Control(name), &area);
    return {area.right - area.left, area.bottom - area.top};
  }
  [[nodiscard]] int RowHeight() const {
    return static_cast<int>(Ask(Control("lstDeclare"), LB_GETITEMHEIGHT));
  }
};

TEST_F(DisplayOutside, AnotherResolutionScalesEverythingAndTheOldOneBringsItBack) {
  const RECT before = WindowPlace();
  const auto places = Places();
  const int row = RowHeight();
  RECT larger = before;
  larger.right = before.left + (before.right - before.left) * 3 / 2;
  larger.bottom = before.top + (before.bottom - before.top) * 3 / 2;
  ChangeResolution(144, larger);
  EXPECT_EQ(SizeOf("RTB").cy, 146 * 3 / 2);
  EXPECT_EQ(SizeOf("lstDeclare").cx, 450);
  EXPECT_EQ(SizeOf("lstAdd").cy, 450);
  EXPECT_GT(RowHeight(), row);
  ChangeResolution(96, before);
  EXPECT_EQ(Places(), places);
  EXPECT_EQ(RowHeight(), row);
}

// The system's colors, for as long as it lives.
class SystemColors {
 public:
  SystemColors() {
    for (std::size_t i = 0; i < kCount; ++i) before_[i] = GetSysColor(kWhich[i]);
    // Those of a black scheme of high contrast.
    Set({RGB(0, 0, 0), RGB(255, 255, 255), RGB(0, 0, 0), RGB(255, 255, 255)});
  }
  SystemColors(const SystemColors&) = delete;
  SystemColors& operator=(const SystemColors&) = delete;
  ~SystemColors() { Set(before_); }

 private:
  static constexpr std::size_t kCount = 4;
  static constexpr int kWhich[kCount] = {COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE,
                                         COLOR_BTNTEXT};
  static void Set(const std::array<COLORREF, kCount>& colors) {
    SetSysColors(kCount, kWhich, colors.data());
  }

  std::array<COLORREF, kCount> before_;
};

// What the screen shows at a place of a window.
COLORREF PixelOf(HWND window, POINT at) {
  ClientToScreen(window, &at);
  const HDC screen = GetDC(nullptr);
  const COLORREF color = GetPixel(screen, at.x, at.y);
  ReleaseDC(nullptr, screen);
  return color;
}

// In the first line of a text.
bool HasWhitePixels(HWND window) {
  for (LONG x = 0; x < 300; ++x) {
    for (LONG y = 2; y < 16; ++y) {
      if (PixelOf(window, {x, y}) == RGB(255, 255, 255)) return true;
    }
  }
  return false;
}

TEST_F(DisplayOutside, ABlackSchemeOfTheSystemIsFollowed) {
  constexpr COLORREF kBlack = RGB(0, 0, 0), kWhite = RGB(255, 255, 255);
  ASSERT_TRUE(Eventually([this] { return PixelOf(Control("lstFind"), {150, 30}) == kWhite; }));
  const SystemColors black;
  // Not every system notifies running programs.
  Close();
  ASSERT_EQ(Program().WaitForEnd(), 0);
  StartAndShow(L"win.api");
  WaitFor("the splash window's end", [this] { return !Program().FindForm("frmSplash"); });
  const struct {
    const char* control;
    POINT at;  // away from texts and pictures
  } places[] = {{"lstFind", {150, 30}},  {"lstDeclare", {150, 130}}, {"lstAdd", {100, 130}},
                {"lstShare", {60, 130}}, {"txtInput", {150, 10}},    {"txtFind", {150, 10}},
                {"RTB", {200, 80}},      {"PosMainWidth", {1, 100}}, {"Toolbar1", {275, 24}}};
  for (const auto& [control, at] : places) {
    EXPECT_TRUE(Eventually([&] { return PixelOf(Control(control), at) == kBlack; })) << control;
  }
  ClickItem("lstDeclare", 1, u"Declare Function");
  EXPECT_TRUE(Eventually([this] { return HasWhitePixels(Control("RTB")); }))
      << "code in black would not be seen";
}

}  // namespace
}  // namespace declarium
