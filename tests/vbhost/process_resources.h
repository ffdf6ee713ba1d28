// What a process holds, for tests that watch it grow.
#pragma once

#include <windows.h>

namespace declarium::vbhost {

// Handles of a process, by its id; -1 when the system does not say.
[[nodiscard]] long long HandleCountOf(DWORD process);

// Committed bytes of a process, by its id.
[[nodiscard]] long long MemoryOf(DWORD process);

}  // namespace declarium::vbhost
