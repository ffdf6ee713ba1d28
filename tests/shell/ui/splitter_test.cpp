#include "shell/ui/splitter.h"

#include <gtest/gtest.h>
#include <memory>

#include "shell/main_layout.h"
#include "toolkit/headless/form.h"
#include "toolkit/headless/picture_box.h"
#include "toolkit/headless/toolkit.h"
#include "toolkit/headless/user.h"
#include "toolkit/text_box.h"

namespace declarium {
namespace {

using headless::HeadlessPictureBox;

constexpr ControlDefinition kControls[] = {
    {.kind = ControlKind::kTextBox, .name = "txtFind"},
    {.kind = ControlKind::kPictureBox, .name = "PosMainWidth", .tab_stop = TabStop::kYes},
    {.kind = ControlKind::kPictureBox, .name = "PosRtbHeight", .tab_stop = TabStop::kYes},
    {.kind = ControlKind::kPictureBox, .name = "PosAddHeight", .tab_stop = TabStop::kYes}};
constexpr FormDefinition kForm = {
    .name = "frmTest", .size = {800, 600}, .border = BorderStyle::kSizable, .controls = kControls};

constexpr PaneSizes kPanes{.main_width = 300, .rtb_height = 146, .add_height = 300};
constexpr MouseEvent kLeftButton{.button = MouseButton::kLeft};
constexpr MouseEvent kRightButton{.button = MouseButton::kRight};
constexpr MouseEvent kNoButton{};

// The three bars of a window of 800 x 600 that is laid out as the main window is.
class SplitterTest : public testing::Test {
 protected:
  SplitterTest() {
    LayOut();
    resizes_ = 0;
    form_->Show();
    user_.MoveCursorTo({1000, 1000});
  }

  void LayOut() {
    ++resizes_;
    const auto layout = LayOutMain(form_->ScaleWidth(), form_->ScaleHeight(), panes_);
    panes_ = layout.panes;
    Box("PosMainWidth").SetBounds(layout.PosMainWidth);
    Box("PosRtbHeight").SetBounds(layout.PosRtbHeight);
    Box("PosAddHeight").SetBounds(layout.PosAddHeight);
  }

  [[nodiscard]] HeadlessPictureBox& Box(std::string_view name) const {
    return form_->Get<HeadlessPictureBox>(name);
  }
  HeadlessPictureBox& Press(std::string_view name, const MouseEvent& event = kLeftButton) {
    user_.MouseDown(Box(name), event);
    return Box(name);
  }
  void MoveTo(PictureBox& box, Point cursor, const MouseEvent& event = kLeftButton) {
    user_.MoveCursorTo(cursor);
    user_.MouseMove(box, event);
  }
  void Release(PictureBox& box, const MouseEvent& event = kLeftButton) {
    user_.MouseUp(box, event);
  }
  PaneSizes Drag(std::string_view name, Point by) {
    user_.MoveCursorTo({1000, 1000});
    auto& box = Press(name);
    MoveTo(box, {1000 + by.x, 1000 + by.y});
    Release(box);
    return panes_;
  }
  [[nodiscard]] bool ShowsFocus(HeadlessPictureBox& box) {
    toolkit_.ProcessPendingEvents();
    const Color background = box.BackColor();
    return box.Surface().PixelAt({0, 0}) != background;
  }

  headless::HeadlessToolkit toolkit_;
  headless::HeadlessUser user_{toolkit_};
  std::unique_ptr<Form> form_ = toolkit_.CreateForm(kForm);
  PaneSizes panes_ = kPanes;
  int resizes_ = 0;
  Splitter main_width_{SplitterBars()[0], *form_, panes_, [this] { LayOut(); }};
  Splitter rtb_height_{SplitterBars()[1], *form_, panes_, [this] { LayOut(); }};
  Splitter add_height_{SplitterBars()[2], *form_, panes_, [this] { LayOut(); }};
};

TEST_F(SplitterTest, EachBarSetsItsOwnPaneSize) {
  EXPECT_EQ(Drag("PosMainWidth", {20, 5}), (PaneSizes{320, 146, 300}));
  panes_ = kPanes;
  LayOut();
  EXPECT_EQ(Drag("PosRtbHeight", {5, 20}), (PaneSizes{300, 126, 300}));
  panes_ = kPanes;
  LayOut();
  EXPECT_EQ(Drag("PosAddHeight", {5, 20}), (PaneSizes{300, 146, 280}));
}

TEST_F(SplitterTest, LettingGoLaysTheWindowOutOnce) {
  Drag("PosMainWidth", {-50, 0});
  EXPECT_EQ(resizes_, 1);
  EXPECT_EQ(Box("PosMainWidth").Bounds().left, 252);
}

TEST_F(SplitterTest, APressAndReleaseInOnePlaceKeepsTheSizes) {
  for (const auto& bar : SplitterBars()) {
    EXPECT_EQ(Drag(bar.name, {0, 0}), kPanes);
  }
}

TEST_F(SplitterTest, TheBarAloneMovesDuringTheDrag) {
  auto& box = Press("PosMainWidth");
  const Rect other = Box("PosAddHeight").Bounds();
  MoveTo(box, {1030, 1000});
  EXPECT_EQ(box.Bounds(), (Rect{332, 26, 3, 423}));
  EXPECT_EQ(Box("PosAddHeight").Bounds(), other);
  EXPECT_EQ(panes_, kPanes);
  EXPECT_EQ(resizes_, 0);
}

TEST_F(SplitterTest, TheBarIsBlackAndInFrontWhileDragged) {
  for (const auto& bar : SplitterBars()) {
    auto& box = Box(bar.name);
    EXPECT_EQ(box.BackColor(), kButtonFaceColor);
    Press(bar.name);
    EXPECT_EQ(box.BackColor(), kBlack);
    EXPECT_EQ(box.TimesBroughtToFront(), 1);
    Release(box);
    EXPECT_EQ(box.BackColor(), 0x8000000F);
  }
}

TEST_F(SplitterTest, TheDragStopsAtTheLimits) {
  auto& main = Press("PosMainWidth");
  MoveTo(main, {0, 0});
  EXPECT_EQ(main.Bounds().left, 100);
  MoveTo(main, {5000, 0});
  EXPECT_EQ(main.Bounds().left, 600);
  Release(main);
  EXPECT_EQ(panes_.main_width, 598);

  user_.MoveCursorTo({1000, 1000});
  auto& rtb = Press("PosRtbHeight");
  MoveTo(rtb, {0, 5000});
  EXPECT_EQ(rtb.Bounds().top, form_->ScaleHeight() - 29);
  MoveTo(rtb, {0, 0});
  EXPECT_EQ(rtb.Bounds().top, 87);
  Release(rtb);
  EXPECT_EQ(panes_.rtb_height, 508);
}

TEST_F(SplitterTest, TheBasketsBarStopsAtItsLimits) {
  auto& box = Press("PosAddHeight");
  MoveTo(box, {0, 0});
  EXPECT_EQ(box.Bounds().top, 65);
  MoveTo(box, {0, 5000});
  EXPECT_EQ(box.Bounds().top, 600 - 146 - 27);
  Release(box);
  EXPECT_EQ(panes_.add_height, 19);
}

TEST_F(SplitterTest, TheBarHasItsPointerAsSoonAsTheMouseIsOverIt) {
  for (const auto& bar : SplitterBars()) {
    auto& box = Box(bar.name);
    EXPECT_EQ(box.Pointer(), MousePointer::kDefault);
    user_.MouseMove(box, kNoButton);
    EXPECT_EQ(box.Pointer(), bar.pointer);
  }
}

TEST_F(SplitterTest, MovingWithoutTheLeftButtonMovesNoBar) {
  auto& box = Box("PosMainWidth");
  MoveTo(box, {1030, 1000}, kLeftButton);  // pressed somewhere else
  EXPECT_EQ(box.Bounds().left, 302);
  Press("PosMainWidth", kRightButton);
  EXPECT_EQ(box.BackColor(), kButtonFaceColor);
  MoveTo(box, {1060, 1000}, kRightButton);
  EXPECT_EQ(box.Bounds().left, 302);
  Release(box, kRightButton);
  EXPECT_EQ(resizes_, 0);
}

TEST_F(SplitterTest, ReleasingAnotherButtonDoesNotEndTheDrag) {
  auto& box = Press("PosMainWidth");
  Release(box, kRightButton);
  EXPECT_EQ(box.BackColor(), kBlack);
  MoveTo(box, {1030, 1000});
  Release(box);
  EXPECT_EQ(panes_.main_width, 330);
}

TEST_F(SplitterTest, EscapePutsTheBarBackAndTheReleaseChangesNothing) {
  for (const auto& bar : SplitterBars()) {
    auto& box = Box(bar.name);
    const Rect rest = box.Bounds();
    user_.MoveCursorTo({1000, 1000});
    Press(bar.name);
    MoveTo(box, {1030, 1030});
    ASSERT_NE(box.Bounds(), rest);
    user_.PressKey(key::kEscape);
    EXPECT_EQ(box.Bounds(), rest);
    EXPECT_EQ(box.BackColor(), kButtonFaceColor);
    EXPECT_EQ(box.Pointer(), MousePointer::kDefault);
    MoveTo(box, {1060, 1060});
    EXPECT_EQ(box.Bounds(), rest);
    Release(box);
    EXPECT_EQ(panes_, kPanes);
  }
  EXPECT_EQ(resizes_, 0);
}

TEST_F(SplitterTest, TheNextDragAfterAnEscapeWorks) {
  auto& box = Press("PosMainWidth");
  user_.PressKey(key::kEscape);
  Release(box);
  EXPECT_EQ(Drag("PosMainWidth", {10, 0}).main_width, 310);
}

TEST_F(SplitterTest, ADoubleClickChangesNothing) {
  auto& box = Box("PosMainWidth");
  user_.DoubleClick(box);
  EXPECT_EQ(panes_, kPanes);
  EXPECT_EQ(resizes_, 1);  // by the first click, which is a drag by nothing
  EXPECT_EQ(box.BackColor(), kButtonFaceColor);
}

TEST_F(SplitterTest, MovingBetweenADoubleClickAndItsReleaseMovesNothing) {
  auto& box = Press("PosMainWidth");
  Release(box);
  box.on_double_click.Raise();
  MoveTo(box, {1030, 1000});
  Release(box);
  EXPECT_EQ(box.Bounds().left, 302);
  EXPECT_EQ(panes_, kPanes);
}

TEST_F(SplitterTest, ADragThatLosesTheFocusIsGivenUp) {
  auto& box = Press("PosMainWidth");
  MoveTo(box, {1030, 1000});
  form_->Get<TextBox>("txtFind").SetFocus();
  EXPECT_EQ(box.Bounds().left, 302);
  EXPECT_EQ(box.BackColor(), kButtonFaceColor);
  Release(box);
  EXPECT_EQ(panes_, kPanes);
}

TEST_F(SplitterTest, ArrowKeysOfItsDirectionMoveTheBar) {
  auto& box = Box("PosMainWidth");
  user_.PressKey(box, key::kRight);
  EXPECT_EQ(box.Bounds().left, 310);
  EXPECT_EQ(box.BackColor(), kBlack);
  EXPECT_EQ(box.TimesBroughtToFront(), 1);
  user_.PressKey(key::kLeft);
  user_.PressKey(key::kLeft);
  EXPECT_EQ(box.Bounds().left, 294);
  EXPECT_EQ(box.TimesBroughtToFront(), 1);
  EXPECT_EQ(panes_, kPanes);
}

TEST_F(SplitterTest, HorizontalBarsTakeTheUpAndDownKeys) {
  auto& box = Box("PosRtbHeight");
  user_.PressKey(box, key::kUp);
  user_.PressKey(key::kLeft);
  user_.PressKey(key::kRight);
  EXPECT_EQ(box.Bounds().top, 441);
  user_.PressKey(key::kEnter);
  EXPECT_EQ(panes_, (PaneSizes{300, 154, 300}));
  user_.PressKey(Box("PosAddHeight"), key::kDown);
  user_.PressKey(key::kEnter);
  EXPECT_EQ(panes_, (PaneSizes{300, 154, 292}));
}

TEST_F(SplitterTest, KeysOfTheOtherDirectionStayWithTheControl) {
  auto& box = Box("PosMainWidth");
  KeyDown up{.code = key::kUp};
  box.on_key_down.Raise(up);
  EXPECT_EQ(up.code, key::kUp);
  KeyDown right{.code = key::kRight};
  box.on_key_down.Raise(right);
  EXPECT_EQ(right.code, 0);
}

TEST_F(SplitterTest, EnterAppliesWhatTheKeysDid) {
  auto& box = Box("PosMainWidth");
  user_.PressKey(box, key::kRight);
  user_.PressKey(key::kEnter);
  EXPECT_EQ(panes_.main_width, 308);
  EXPECT_EQ(resizes_, 1);
  EXPECT_EQ(box.BackColor(), kButtonFaceColor);
  user_.PressKey(key::kEnter);
  EXPECT_EQ(resizes_, 1);
}

TEST_F(SplitterTest, LeavingTheBarAppliesWhatTheKeysDid) {
  user_.PressKey(Box("PosMainWidth"), key::kRight);
  user_.PressKey(key::kTab);
  EXPECT_EQ(panes_.main_width, 308);
  EXPECT_EQ(resizes_, 1);
  user_.PressKey(key::kTab);
  EXPECT_EQ(resizes_, 1);
}

TEST_F(SplitterTest, EscapeUndoesWhatTheKeysDid) {
  auto& box = Box("PosMainWidth");
  user_.PressKey(box, key::kRight);
  user_.PressKey(key::kEscape);
  EXPECT_EQ(box.Bounds().left, 302);
  EXPECT_EQ(box.BackColor(), kButtonFaceColor);
  user_.PressKey(key::kTab);
  EXPECT_EQ(panes_, kPanes);
  EXPECT_EQ(resizes_, 0);
}

TEST_F(SplitterTest, KeysStopAtTheLimits) {
  auto& box = Box("PosMainWidth");
  user_.PressKey(box, key::kLeft);
  for (int i = 0; i < 100; ++i) user_.PressKey(key::kLeft);
  EXPECT_EQ(box.Bounds().left, 100);
  for (int i = 0; i < 100; ++i) user_.PressKey(key::kRight);
  EXPECT_EQ(box.Bounds().left, 600);
}

TEST_F(SplitterTest, KeysDoNotMoveABarThatTheMouseHolds) {
  auto& box = Press("PosMainWidth");
  user_.PressKey(key::kRight);
  EXPECT_EQ(box.Bounds().left, 302);
}

TEST_F(SplitterTest, APressAppliesWhatTheKeysDid) {
  user_.PressKey(Box("PosMainWidth"), key::kRight);
  auto& box = Press("PosMainWidth");
  EXPECT_EQ(panes_.main_width, 308);
  MoveTo(box, {1001, 1000});
  Release(box);
  EXPECT_EQ(panes_.main_width, 309);
}

TEST_F(SplitterTest, TheFocusShowsWhileTheBarRests) {
  auto& box = Box("PosMainWidth");
  EXPECT_FALSE(ShowsFocus(box));
  box.SetFocus();
  EXPECT_TRUE(ShowsFocus(box));
  user_.PressKey(key::kRight);
  EXPECT_FALSE(ShowsFocus(box));
  user_.PressKey(key::kEnter);
  EXPECT_TRUE(ShowsFocus(box));
  user_.PressKey(key::kTab);
  EXPECT_FALSE(ShowsFocus(box));
}

}  // namespace
}  // namespace declarium
