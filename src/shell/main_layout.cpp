#include "shell/main_layout.h"

#include <algorithm>

namespace declarium {

namespace {

constexpr int kMargin = 2;
constexpr int kBar = 3;  // thickness of a splitter bar
constexpr int kTextTop = kToolbarRowHeight;
constexpr int kInputHeight = 21;
constexpr int kListTop = 48;
constexpr int kScrollBar = 20;  // what a list's column leaves free

// Sizes come from settings that anybody may have edited; no screen has larger ones, and sums of
// these cannot overflow.
int Sane(int size) {
  constexpr int kLargest = 1'000'000;
  return std::clamp(size, -kLargest, kLargest);
}

PaneSizes Fit(int scale_width, int scale_height, const PaneSizes& wanted) {
  PaneSizes panes{Sane(wanted.main_width), Sane(wanted.rtb_height), Sane(wanted.add_height)};
  if (scale_height - panes.rtb_height - panes.add_height < 73) {
    panes.add_height = scale_height - panes.rtb_height - 73;
  }
  if (scale_width - panes.main_width < 200) panes.main_width = scale_width - 200;
  return panes;
}

// The left column, and the code display, whose place follows from the column's height.
void LayOutColumn(int scale_width, int scale_height, MainLayout& layout) {
  const auto [main_width, rtb_height, add_height] = layout.panes;
  const int h = scale_height - rtb_height - 53;
  layout.txtInput = {kMargin, kTextTop, main_width, kInputHeight};
  layout.kind_list = {kMargin, kListTop, main_width, h};
  layout.PosMainWidth = {main_width + 2, kTextTop, kBar, h + 22};
  layout.RTB = {kMargin, h + 51, scale_width - 4, rtb_height};
  layout.PosRtbHeight = {kMargin, layout.RTB.top - 3, layout.RTB.width, kBar};
}

void LayOutRightArea(int scale_width, int scale_height, MainLayout& layout) {
  const auto [main_width, rtb_height, add_height] = layout.panes;
  const int w = scale_width - main_width - 7;
  const int x = main_width + 5;
  const int y = scale_height - rtb_height - add_height - 5;
  const int add_width = (w - 3) / 2;
  const int share_width = (w - 3 + 1) / 2;  // an odd pixel goes to the shared items
  layout.txtFind = {x, kTextTop, w, kInputHeight};
  layout.lstFind = {x, kListTop, w, y - 51};
  layout.lstAdd = {x, y, add_width, add_height};
  layout.lstShare = {add_width + x + 3, y, share_width, add_height};
  layout.PosAddHeight = {x, y - 3, w, kBar};
  layout.add_column_width = std::max(add_width - kScrollBar, 0);
  layout.share_column_width = std::max(share_width - kScrollBar, 0);
}

void RemoveNegativeExtents(MainLayout& layout) {
  for (Rect* rect : {&layout.txtInput, &layout.kind_list, &layout.txtFind, &layout.lstFind,
                     &layout.lstAdd, &layout.lstShare, &layout.RTB, &layout.PosMainWidth,
                     &layout.PosRtbHeight, &layout.PosAddHeight}) {
    rect->width = std::max(rect->width, 0);
    rect->height = std::max(rect->height, 0);
  }
}

}  // namespace

std::optional<Size> CorrectedOuterSize(Size outer) {
  if (outer.width < kMinimumOuterSize.width) return Size{kMinimumOuterSize.width, outer.height};
  if (outer.height < kMinimumOuterSize.height) return Size{outer.width, kMinimumOuterSize.height};
  return std::nullopt;
}

MainLayout LayOutMain(int scale_width, int scale_height, const PaneSizes& panes) {
  MainLayout layout{.panes = Fit(scale_width, scale_height, panes)};
  LayOutColumn(scale_width, scale_height, layout);
  LayOutRightArea(scale_width, scale_height, layout);
  RemoveNegativeExtents(layout);
  return layout;
}

}  // namespace declarium
