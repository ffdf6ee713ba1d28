#include "toolkit/contract.h"

namespace declarium {
namespace {

class PictureContract : public ShownContract {
 protected:
  PictureBox& picture() { return Get<PictureBox>("Picture1"); }
  PictureBox& bar() { return Get<PictureBox>("Bar1"); }
};

TEST_F(PictureContract, ThePictureHasItsBackColor) {
  picture().Refresh();
  EXPECT_EQ(picture().BackColor(), 0x800000u);
  EXPECT_EQ(user().PixelOf(picture(), {3, 3}), 0x800000u);
  picture().SetBackColor(0x00FF00);
  picture().Refresh();
  EXPECT_EQ(user().PixelOf(picture(), {3, 3}), 0x00FF00u);
}

TEST_F(PictureContract, PaintingAddsToTheBackColor) {
  picture().on_paint = [](Canvas& canvas) {
    EXPECT_EQ(canvas.Extent(), (Size{60, 24}));
    canvas.Fill({0, 0, 10, 10}, 0x0000FF);
    canvas.Invert({5, 0, 20, 10});
  };
  picture().Invalidate();
  picture().Refresh();
  EXPECT_EQ(user().PixelOf(picture(), {2, 5}), 0x0000FFu);
  EXPECT_EQ(user().PixelOf(picture(), {7, 5}), 0xFFFF00u);
  EXPECT_EQ(user().PixelOf(picture(), {15, 5}), 0x7FFFFFu);
  EXPECT_EQ(user().PixelOf(picture(), {40, 15}), 0x800000u);
}

TEST_F(PictureContract, PendingEventsPaint) {
  int painted = 0;
  picture().on_paint = [&](Canvas&) { ++painted; };
  picture().Invalidate();
  EXPECT_EQ(painted, 0);
  toolkit().ProcessPendingEvents();
  EXPECT_EQ(painted, 1);
}

TEST_F(PictureContract, TheMouseIsReportedWithButtonAndPlace) {
  const auto log = [this](const char* what) {
    return [this, what](const MouseEvent& event) {
      // The screen's own pointer may report where it rests.
      if (event.button == MouseButton::kNone) return;
      log_.push_back(std::string(what) + " " + std::to_string(static_cast<int>(event.button)) +
                     " " + std::to_string(event.at.x) + "," + std::to_string(event.at.y));
    };
  };
  bar().on_mouse_down = log("down");
  bar().on_mouse_move = log("move");
  bar().on_mouse_up = log("up");
  user().MouseDown(bar(), {.button = MouseButton::kLeft, .at = {2, 10}});
  user().MouseMove(bar(), {.button = MouseButton::kLeft, .at = {40, 10}});
  user().MouseUp(bar(), {.button = MouseButton::kLeft, .at = {40, 11}});
  EXPECT_THAT(TakeLog(), ElementsAre("down 1 2,10", "move 1 40,10", "up 1 40,11"));
}

TEST_F(PictureContract, APressFocusesThePictureSoThatItGetsKeys) {
  bar().on_key_down = [this](KeyDown& down) { log_.push_back(std::to_string(down.code)); };
  user().MouseDown(bar(), {.button = MouseButton::kLeft, .at = {2, 10}});
  EXPECT_TRUE(bar().HasFocus());
  user().PressKey(key::kEscape);
  EXPECT_THAT(TakeLog(), ElementsAre("27"));
}

TEST_F(PictureContract, ADoubleClickStandsForTheSecondPress) {
  bar().on_mouse_down = Log("down");
  bar().on_mouse_up = Log("up");
  bar().on_double_click = Log("double");
  user().DoubleClick(bar());
  EXPECT_THAT(TakeLog(), ElementsAre("down", "up", "double", "up"));
}

TEST_F(PictureContract, APostedPressArrivesWithThePendingEvents) {
  picture().on_mouse_down = Log("down");
  picture().PostMouseDown();
  EXPECT_THAT(TakeLog(), IsEmpty());
  toolkit().ProcessPendingEvents();
  EXPECT_THAT(TakeLog(), ElementsAre("down"));
}

TEST_F(PictureContract, APostedPressToAnUnloadedFormIsForgotten) {
  picture().on_mouse_down = Log("down");
  picture().PostMouseDown();
  form().Unload();
  toolkit().ProcessPendingEvents();
  EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(PictureContract, TabStopsAtAPictureOnlyWhenTheTableSaysSo) {
  Get<TextBox>("Text2").SetFocus();
  Get<CheckBox>("Check2").SetFocus();
  user().PressKey(key::kTab);
  EXPECT_TRUE(Get<TextBox>("Text2").HasFocus());
  picture().on_got_focus = Log("got");
  picture().SetFocus();
  EXPECT_THAT(TakeLog(), ElementsAre("got"));
}

}  // namespace
}  // namespace declarium
