// What another process holds, told under Wine too, where the system's own functions for it answer
// nothing.
#pragma once

#include <windows.h>

namespace declarium::bench {

struct Holdings {
  long long gdi_objects = 0;
  // Of all processes on the desktop; only differences tell something.
  long long user_handles = 0;
  long long memory = 0;  // committed, in KB
};

// `process` must be open for reading its memory.
[[nodiscard]] Holdings HoldingsOf(DWORD process);

}  // namespace declarium::bench
