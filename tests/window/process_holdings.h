// What a process holds; counts under Wine too, where the system's own functions for it answer
// nothing.
#pragma once

#include <windows.h>

namespace declarium::window_driver {

struct Holdings {
  long long gdi_objects = 0;  // the fewest of several looks: painting takes some for a moment
  // Of all processes on the desktop; only differences tell something.
  long long user_handles = 0;
  long long memory = 0;  // committed, in KB
};

// Throws std::runtime_error when the process cannot be looked into.
[[nodiscard]] Holdings HoldingsOf(DWORD process);

}  // namespace declarium::window_driver
