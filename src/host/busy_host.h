// How long a host that is busy is waited for: it rejects calls while it shows a modal dialog or
// runs the user's program.
#pragma once

#include <chrono>
#include <optional>

namespace declarium {

inline constexpr std::chrono::milliseconds kBusyHostLimit{3000};
inline constexpr std::chrono::milliseconds kBusyHostPause{50};

enum class BusyHost { kWaitFor, kGiveUp };

// The pause before a rejected call is made again, `elapsed` after it was made first; none when it
// is to fail.
[[nodiscard]] constexpr std::optional<std::chrono::milliseconds> PauseBeforeRetry(
    BusyHost policy, std::chrono::milliseconds elapsed) noexcept {
  if (policy == BusyHost::kGiveUp || elapsed >= kBusyHostLimit) return std::nullopt;
  return kBusyHostPause;
}

}  // namespace declarium
