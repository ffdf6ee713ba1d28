// What rounds of connecting, inserting and disconnecting leave behind in the two processes.
#pragma once

#include <functional>
#include <windows.h>

namespace declarium {

// What the environment variable DECLARIUM_ROUNDS says, `otherwise` without it.
[[nodiscard]] int RoundsWanted(int otherwise);

// Enough rounds to distinguish one handle or four kilobytes in each from what comes and goes.
inline constexpr int kEnoughRounds = 40;

// Expects that `rounds` leave neither a handle each nor a few kilobytes each in a process, after
// 20 that warm up, and prints what they do leave. The processes are named by their ids; `run` does
// so many rounds and may fail fatally, which ends the measuring.
void ExpectRoundsLeaveNothing(DWORD add_in, DWORD host, int rounds,
                              const std::function<void(int rounds)>& run);

}  // namespace declarium
