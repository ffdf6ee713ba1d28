// The three sizes of the main window that its user sets with the splitter bars.
#pragma once

namespace declarium {

// Pixels at 96 dpi.
struct PaneSizes {
  int main_width = 300;  // the left column: the kind lists and txtInput
  int rtb_height = 146;  // the code display along the bottom
  int add_height = 300;  // basket and shared items
  bool operator==(const PaneSizes&) const = default;
};

}  // namespace declarium
