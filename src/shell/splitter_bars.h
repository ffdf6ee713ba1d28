// The main window's three splitter bars: where each stands, how far it goes, and which pane size
// its position means. A position is the bar's left or upper edge, in pixels at 96 dpi of the
// window's inner area.
#pragma once

#include <span>
#include <string_view>

#include "shell/pane_sizes.h"
#include "toolkit/geometry.h"
#include "toolkit/input.h"

namespace declarium {

enum class BarMovement { kAcross, kUpAndDown };

struct BarLimits {
  int lowest = 0;
  int highest = 0;
};

struct SplitterBar {
  std::string_view name;
  BarMovement movement;
  MousePointer pointer;
  int (*rest_position)(Size area, const PaneSizes& panes);
  BarLimits (*limits)(Size area, const PaneSizes& panes);
  // The pane sizes when the bar is let go at a position.
  PaneSizes (*panes_at)(Size area, const PaneSizes& panes, int position);
};

// PosMainWidth, PosRtbHeight, PosAddHeight.
[[nodiscard]] std::span<const SplitterBar, 3> SplitterBars();

// `position` within the bar's limits. The upper limit wins where they cross.
[[nodiscard]] int WithinLimits(const SplitterBar& bar, Size area, const PaneSizes& panes,
                               int position);

}  // namespace declarium
