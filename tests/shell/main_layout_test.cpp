#include "shell/main_layout.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace declarium {
namespace {

int Right(const Rect& rect) {
  return rect.left + rect.width;
}
int Bottom(const Rect& rect) {
  return rect.top + rect.height;
}
bool Overlap(const Rect& a, const Rect& b) {
  return a.left < Right(b) && b.left < Right(a) && a.top < Bottom(b) && b.top < Bottom(a);
}

std::vector<std::pair<std::string, Rect>> AllRects(const MainLayout& layout) {
  return {{"txtInput", layout.txtInput},
          {"kind_list", layout.kind_list},
          {"txtFind", layout.txtFind},
          {"lstFind", layout.lstFind},
          {"lstAdd", layout.lstAdd},
          {"lstShare", layout.lstShare},
          {"RTB", layout.RTB},
          {"PosMainWidth", layout.PosMainWidth},
          {"PosRtbHeight", layout.PosRtbHeight},
          {"PosAddHeight", layout.PosAddHeight}};
}

TEST(MainLayout, WidensANarrowWindowFirst) {
  EXPECT_EQ(kMinimumOuterSize, (Size{622, 400}));
  EXPECT_EQ(CorrectedOuterSize({621, 399}), (Size{622, 399}));
  EXPECT_EQ(CorrectedOuterSize({622, 399}), (Size{622, 400}));
  EXPECT_EQ(CorrectedOuterSize({1000, 0}), (Size{1000, 400}));
  EXPECT_EQ(CorrectedOuterSize({0, 1000}), (Size{622, 1000}));
  EXPECT_EQ(CorrectedOuterSize({622, 400}), std::nullopt);
}

TEST(MainLayout, PlacesEveryControl) {
  EXPECT_EQ(LayOutMain(800, 600, {.main_width = 300, .rtb_height = 146, .add_height = 300}),
            (MainLayout{.panes = {300, 146, 300},
                        .txtInput = {2, 26, 300, 21},
                        .kind_list = {2, 48, 300, 401},
                        .txtFind = {305, 26, 493, 21},
                        .lstFind = {305, 48, 493, 98},
                        .lstAdd = {305, 149, 245, 300},
                        .lstShare = {553, 149, 245, 300},
                        .RTB = {2, 452, 796, 146},
                        .PosMainWidth = {302, 26, 3, 423},
                        .PosRtbHeight = {2, 449, 796, 3},
                        .PosAddHeight = {305, 146, 493, 3},
                        .add_column_width = 225,
                        .share_column_width = 225}));
}

TEST(MainLayout, GivesTheOddPixelToTheSharedItems) {
  const MainLayout layout = LayOutMain(801, 600, {});
  EXPECT_EQ(layout.lstAdd.width, 245);
  EXPECT_EQ(layout.lstShare.width, 246);
  EXPECT_EQ(layout.add_column_width, 225);
  EXPECT_EQ(layout.share_column_width, 226);
}

TEST(MainLayout, KeepsSeventyThreePixelsAboveTheBasketAndTheCode) {
  EXPECT_EQ(LayOutMain(800, 519, {300, 146, 300}).panes.add_height, 300);
  EXPECT_EQ(LayOutMain(800, 518, {300, 146, 300}).panes.add_height, 299);
  EXPECT_EQ(LayOutMain(800, 350, {300, 146, 300}).panes.add_height, 131);
}

TEST(MainLayout, KeepsTwoHundredPixelsRightOfTheLeftColumn) {
  EXPECT_EQ(LayOutMain(800, 600, {600, 146, 300}).panes.main_width, 600);
  EXPECT_EQ(LayOutMain(800, 600, {601, 146, 300}).panes.main_width, 600);
  EXPECT_EQ(LayOutMain(610, 600, {600, 146, 300}).panes.main_width, 410);
}

TEST(MainLayout, LeavesTheHeightOfTheCodeAloneInALowWindow) {
  const MainLayout layout = LayOutMain(800, 350, {300, 400, 300});
  EXPECT_EQ(layout.panes, (PaneSizes{300, 400, -123}));
  EXPECT_EQ(layout.RTB, (Rect{2, -52, 796, 400}));
  EXPECT_EQ(layout.kind_list.height, 0);
  EXPECT_EQ(layout.lstAdd.height, 0);
}

TEST(MainLayout, TakesSettingsThatAreNoSizes) {
  for (const int size : {-2147483647 - 1, -1, 0, 2147483647}) {
    const MainLayout layout = LayOutMain(800, 600, {size, size, size});
    for (const auto& [name, rect] : AllRects(layout)) {
      EXPECT_GE(rect.width, 0) << name << " for " << size;
      EXPECT_GE(rect.height, 0) << name << " for " << size;
    }
  }
}

// Every size that a window with any border can have, and every pane size that the splitter bars
// can set in some window.
template <class Check>
void ForManySizes(Check check) {
  for (int width = 600; width <= 2000; width += 37) {
    for (int height = 340; height <= 1300; height += 41) {
      for (int main_width = 98; main_width <= 1800; main_width += 131) {
        for (int rtb_height = 24; rtb_height <= height - 92; rtb_height += 97) {
          for (int add_height = 19; add_height <= 1200; add_height += 173) {
            check(Size{width, height}, PaneSizes{main_width, rtb_height, add_height});
          }
        }
      }
    }
  }
}

TEST(MainLayout, NeverLetsControlsOverlapOrLeaveTheWindow) {
  ForManySizes([](Size area, const PaneSizes& panes) {
    const auto rects = AllRects(LayOutMain(area.width, area.height, panes));
    const Rect toolbar{0, 0, area.width, kToolbarRowHeight};
    for (std::size_t i = 0; i < rects.size(); ++i) {
      const auto& [name, rect] = rects[i];
      const bool inside = rect.left >= 2 && Right(rect) <= area.width - 2 &&
                          Bottom(rect) <= area.height - 2 && !Overlap(rect, toolbar);
      ASSERT_TRUE(inside) << name << " at " << area.width << "x" << area.height;
      for (std::size_t j = 0; j < i; ++j) {
        ASSERT_FALSE(Overlap(rect, rects[j].second))
            << name << " over " << rects[j].first << " at " << area.width << "x" << area.height
            << " with " << panes.main_width << " " << panes.rtb_height << " " << panes.add_height;
      }
    }
  });
}

TEST(MainLayout, LeavesNoGapsBetweenPanesAndBars) {
  ForManySizes([](Size area, const PaneSizes& panes) {
    const MainLayout l = LayOutMain(area.width, area.height, panes);
    ASSERT_EQ(Bottom(l.kind_list), l.PosRtbHeight.top);
    ASSERT_EQ(Bottom(l.lstAdd), l.PosRtbHeight.top);
    ASSERT_EQ(Bottom(l.lstFind), l.PosAddHeight.top);
    ASSERT_EQ(Bottom(l.PosAddHeight), l.lstAdd.top);
    ASSERT_EQ(Bottom(l.PosMainWidth), l.PosRtbHeight.top);
    ASSERT_EQ(Bottom(l.PosRtbHeight), l.RTB.top);
    ASSERT_EQ(Bottom(l.RTB), area.height - 2);
    ASSERT_EQ(Right(l.kind_list), l.PosMainWidth.left);
    ASSERT_EQ(Right(l.PosMainWidth), l.lstFind.left);
    ASSERT_EQ(Right(l.lstFind), area.width - 2);
    ASSERT_EQ(Right(l.lstShare), area.width - 2);
    ASSERT_EQ(Right(l.lstAdd) + 3, l.lstShare.left);
  });
}

TEST(MainLayout, IsTheSameWhenItsOwnPaneSizesComeBack) {
  ForManySizes([](Size area, const PaneSizes& panes) {
    const MainLayout once = LayOutMain(area.width, area.height, panes);
    ASSERT_EQ(LayOutMain(area.width, area.height, once.panes), once);
  });
}

}  // namespace
}  // namespace declarium
