#include "shell/splitter_bars.h"

#include <algorithm>

namespace declarium {

namespace {

constexpr SplitterBar kBars[] = {
    {.name = "PosMainWidth",
     .movement = BarMovement::kAcross,
     .pointer = MousePointer::kSizeWestEast,
     .rest_position = [](Size, const PaneSizes& panes) { return panes.main_width + 2; },
     .limits = [](Size area, const PaneSizes&) { return BarLimits{100, area.width - 200}; },
     .panes_at = [](Size, const PaneSizes& panes,
                    int left) { return PaneSizes{left - 2, panes.rtb_height, panes.add_height}; }},
    {.name = "PosRtbHeight",
     .movement = BarMovement::kUpAndDown,
     .pointer = MousePointer::kSizeNorthSouth,
     .rest_position = [](Size area,
                         const PaneSizes& panes) { return area.height - panes.rtb_height - 5; },
     .limits = [](Size area, const PaneSizes&) { return BarLimits{87, area.height - 29}; },
     .panes_at =
         [](Size area, const PaneSizes& panes, int top) {
           return PaneSizes{panes.main_width, area.height - top - 5, panes.add_height};
         }},
    {.name = "PosAddHeight",
     .movement = BarMovement::kUpAndDown,
     .pointer = MousePointer::kSizeNorthSouth,
     .rest_position =
         [](Size area, const PaneSizes& panes) {
           return area.height - panes.rtb_height - panes.add_height - 8;
         },
     .limits =
         [](Size area, const PaneSizes& panes) {
           return BarLimits{65, area.height - panes.rtb_height - 27};
         },
     .panes_at =
         [](Size area, const PaneSizes& panes, int top) {
           return PaneSizes{panes.main_width, panes.rtb_height,
                            area.height - top - panes.rtb_height - 8};
         }}};

}  // namespace

std::span<const SplitterBar, 3> SplitterBars() {
  return kBars;
}

int WithinLimits(const SplitterBar& bar, Size area, const PaneSizes& panes, int position) {
  const auto [lowest, highest] = bar.limits(area, panes);
  return std::min(std::max(position, lowest), highest);
}

}  // namespace declarium
