#include "toolkit/screen_place.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace declarium {
namespace {

constexpr Rect kMain{0, 0, 1920, 1040};
constexpr Rect kSecond{1920, -200, 1280, 1024};  // to the right, somewhat higher
const std::vector<Rect> kBoth{kMain, kSecond};

TEST(ScreenPlace, AWindowThatCanBeTakenHoldOfStaysWhereItIs) {
  for (const Rect& area :
       {Rect{100, 100, 620, 400}, Rect{-500, 0, 620, 400}, Rect{1850, 0, 620, 400},
        Rect{2500, -200, 620, 400}, Rect{100, 1030, 620, 400}, Rect{-100, -10, 4000, 3000}}) {
    EXPECT_EQ(PlaceOnScreen(area, kBoth), area) << area.left << "," << area.top;
  }
}

struct Moved {
  Rect area;
  Rect place;
};

TEST(ScreenPlace, AWindowOutOfReachIsMovedToTheNearestScreen) {
  for (const auto& [area, place] : {
           Moved{{-3000, 100, 620, 400}, {0, 100, 620, 400}},
           Moved{{100, 1036, 620, 400}, {100, 640, 620, 400}},
           Moved{{100, -300, 620, 400}, {100, 0, 620, 400}},
           Moved{{9000, 100, 620, 400}, {2580, 100, 620, 400}},
           Moved{{-600, 100, 620, 400}, {0, 100, 620, 400}},
       }) {
    EXPECT_EQ(PlaceOnScreen(area, kBoth), place) << area.left << "," << area.top;
  }
}

TEST(ScreenPlace, AWindowThatIsMovedGetsNoLargerThanItsScreen) {
  EXPECT_EQ(PlaceOnScreen({-30000, -30000, 60000, 60000}, std::vector{kMain}), kMain);
}

TEST(ScreenPlace, NoNumberIsTooLarge) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  EXPECT_EQ(PlaceOnScreen({kMost, kMost, kMost, kMost}, std::vector{kMain}), kMain);
  EXPECT_EQ(PlaceOnScreen({kLeast, kLeast, 600, 400}, std::vector{kMain}), (Rect{0, 0, 600, 400}));
}

TEST(ScreenPlace, WithoutScreensNothingIsMoved) {
  const Rect area{-3000, 100, 620, 400};
  EXPECT_EQ(PlaceOnScreen(area, {}), area);
}

}  // namespace
}  // namespace declarium
