// Places and sizes. Unless a function says otherwise they are in pixels at 96 dpi; a backend scales
// them to physical pixels.
#pragma once

namespace declarium {

struct Point {
  int x = 0;
  int y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
};

}  // namespace declarium
