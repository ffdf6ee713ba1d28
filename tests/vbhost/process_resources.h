// What a process holds, for tests that watch it grow.
#pragma once

namespace declarium::vbhost {

// Handles of the calling process; -1 when the system does not tell.
[[nodiscard]] long long OwnHandleCount();

// Committed bytes of the calling process.
[[nodiscard]] long long OwnMemory();

}  // namespace declarium::vbhost
