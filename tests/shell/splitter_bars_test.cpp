#include "shell/splitter_bars.h"

#include <gtest/gtest.h>

#include "shell/main_layout.h"

namespace declarium {
namespace {

constexpr Size kArea{800, 600};
constexpr PaneSizes kPanes{.main_width = 300, .rtb_height = 146, .add_height = 300};

const SplitterBar& MainWidth() {
  return SplitterBars()[0];
}
const SplitterBar& RtbHeight() {
  return SplitterBars()[1];
}
const SplitterBar& AddHeight() {
  return SplitterBars()[2];
}

TEST(SplitterBars, HaveTheirNamesAndPointers) {
  EXPECT_EQ(MainWidth().name, "PosMainWidth");
  EXPECT_EQ(RtbHeight().name, "PosRtbHeight");
  EXPECT_EQ(AddHeight().name, "PosAddHeight");
  EXPECT_EQ(static_cast<int>(MainWidth().pointer), 9);
  EXPECT_EQ(static_cast<int>(RtbHeight().pointer), 7);
  EXPECT_EQ(static_cast<int>(AddHeight().pointer), 7);
}

TEST(SplitterBars, RestWhereTheLayoutPutsThem) {
  for (int height = 400; height < 1000; height += 7) {
    const MainLayout layout = LayOutMain(900, height, kPanes);
    const Size area{900, height};
    EXPECT_EQ(MainWidth().rest_position(area, layout.panes), layout.PosMainWidth.left);
    EXPECT_EQ(RtbHeight().rest_position(area, layout.panes), layout.PosRtbHeight.top);
    EXPECT_EQ(AddHeight().rest_position(area, layout.panes), layout.PosAddHeight.top);
  }
  EXPECT_EQ(MainWidth().rest_position(kArea, kPanes), 302);
  EXPECT_EQ(RtbHeight().rest_position(kArea, kPanes), 449);
  EXPECT_EQ(AddHeight().rest_position(kArea, kPanes), 146);
}

TEST(SplitterBars, StopAtTheirLimits) {
  struct Case {
    const SplitterBar& bar;
    int lowest;
    int highest;
  };
  const Case cases[] = {{MainWidth(), 100, 600}, {RtbHeight(), 87, 571}, {AddHeight(), 65, 427}};
  for (const auto& [bar, lowest, highest] : cases) {
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, -10000), lowest);
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, lowest - 1), lowest);
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, lowest), lowest);
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, lowest + 1), lowest + 1);
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, highest), highest);
    EXPECT_EQ(WithinLimits(bar, kArea, kPanes, highest + 1), highest);
  }
}

TEST(SplitterBars, ObeyTheUpperLimitWhereTheLimitsCross) {
  EXPECT_EQ(WithinLimits(MainWidth(), {250, 600}, kPanes, 70), 50);
  EXPECT_EQ(WithinLimits(RtbHeight(), {800, 100}, kPanes, 90), 71);
  EXPECT_EQ(WithinLimits(AddHeight(), {800, 200}, kPanes, 60), 27);
}

TEST(SplitterBars, MeanOnePaneSizeEach) {
  EXPECT_EQ(MainWidth().panes_at(kArea, kPanes, 252), (PaneSizes{250, 146, 300}));
  EXPECT_EQ(RtbHeight().panes_at(kArea, kPanes, 395), (PaneSizes{300, 200, 300}));
  EXPECT_EQ(AddHeight().panes_at(kArea, kPanes, 196), (PaneSizes{300, 146, 250}));
}

TEST(SplitterBars, ChangeNothingWhenLetGoAtRest) {
  for (const SplitterBar& bar : SplitterBars()) {
    EXPECT_EQ(bar.panes_at(kArea, kPanes, bar.rest_position(kArea, kPanes)), kPanes);
  }
}

}  // namespace
}  // namespace declarium
