// What the keyboard and mouse events of a control carry.
#pragma once

#include "toolkit/geometry.h"

namespace declarium {

// Key codes (those of the Windows virtual keys). A letter's or digit's code is its capital
// character.
namespace key {
inline constexpr int kBackspace = 8;
inline constexpr int kTab = 9;
inline constexpr int kEnter = 13;
inline constexpr int kEscape = 27;
inline constexpr int kSpace = 32;
inline constexpr int kPageUp = 33;
inline constexpr int kPageDown = 34;
inline constexpr int kEnd = 35;
inline constexpr int kHome = 36;
inline constexpr int kLeft = 37;
inline constexpr int kUp = 38;
inline constexpr int kRight = 39;
inline constexpr int kDown = 40;
inline constexpr int kInsert = 45;
inline constexpr int kDelete = 46;
inline constexpr int kApps = 93;
inline constexpr int kF1 = 112;
inline constexpr int kF2 = 113;
inline constexpr int kF3 = 114;
inline constexpr int kF5 = 116;
inline constexpr int kF10 = 121;
}  // namespace key

struct Modifiers {
  bool shift = false;
  bool control = false;
  bool alt = false;
  bool operator==(const Modifiers&) const = default;
};

// A key goes down. A swallowed key has no further effect: the control does not act on it and no
// KeyPress follows.
struct KeyDown {
  int code = 0;  // 0 = swallowed
  Modifiers modifiers = {};

  void Swallow() { code = 0; }
};

// A character arrives at the control that has the focus.
struct KeyPress {
  char16_t character = 0;  // 0 = swallowed

  void Swallow() { character = 0; }
};

enum class MouseButton { kNone = 0, kLeft = 1, kRight = 2, kMiddle = 4 };

// A mouse press, move or release. `button` is the button pressed or released, or for a move the one
// held down (the left one when several are).
struct MouseEvent {
  MouseButton button = MouseButton::kNone;
  Point at = {};  // in the control, from its upper left corner
  Modifiers modifiers = {};
};

// The picture of the mouse pointer; the numbers are the host language's.
enum class MousePointer {
  kDefault = 0,
  kArrow = 1,
  kSizeNorthSouth = 7,
  kSizeWestEast = 9,
  kHourglass = 11,
};

}  // namespace declarium
