// Where the main window's controls stand at any size of the window. All numbers are pixels at
// 96 dpi in the window's inner area.
//
//      0  toolbar row                                          kToolbarRowHeight = 26
//     26  txtInput (21)              | txtFind (21)
//     48  lstConst, lstDeclare,      | lstFind
//         lstType                    |------------- PosAddHeight (3) -------------
//                       PosMainWidth | lstAdd            | lstShare
//         ---------------------- PosRtbHeight (3) --------------------------------
//         RTB
//
// Everything from 26 downwards touches its neighbor or a bar, with a margin of 2 at the left,
// right and lower edge, so that these rows cannot be moved one by one.
#pragma once

#include <optional>

#include "shell/pane_sizes.h"
#include "toolkit/geometry.h"

namespace declarium {

inline constexpr int kToolbarRowHeight = 26;

// The smallest outer size of the window: 9330 x 6000 twips, at 15 twips to the pixel.
inline constexpr Size kMinimumOuterSize{9330 / 15, 6000 / 15};

// The outer size to give to a window that is too small, instead of laying it out: too narrow, its
// width is corrected and its height left to the next call; nullopt for a window large enough.
[[nodiscard]] std::optional<Size> CorrectedOuterSize(Size outer);

struct MainLayout {
  PaneSizes panes = {};  // shrunk as far as the window demands it, to be kept

  Rect txtInput = {};
  Rect kind_list = {};  // lstConst, lstDeclare and lstType
  Rect txtFind = {};
  Rect lstFind = {};
  Rect lstAdd = {};
  Rect lstShare = {};
  Rect RTB = {};
  Rect PosMainWidth = {};
  Rect PosRtbHeight = {};
  Rect PosAddHeight = {};
  int add_column_width = 0;    // first column of lstAdd
  int share_column_width = 0;  // first column of lstShare

  bool operator==(const MainLayout&) const = default;
};

// A basket too high is shrunk until 73 pixels remain above it and the code display, a left column
// too wide until 200 remain to its right. The code display is never shrunk. Where there is no room
// at all a control gets the extent 0.
[[nodiscard]] MainLayout LayOutMain(int scale_width, int scale_height, const PaneSizes& panes);

}  // namespace declarium
