// What something leaves behind when it is done again and again.
//
// What is left by it adds to every batch and never comes back. What the system makes once and keeps
// may come late, and what it only takes for a while (threads for calls between processes, each with
// handles and a stack) it gives back within seconds, later on a busy machine. So the counts are
// waited for, and too much in one batch is looked at in the next.
#pragma once

#include <chrono>
#include <thread>

namespace declarium {

struct GrowthPatience {
  int batches = 3;                // so many in a row have to grow before it counts
  std::chrono::seconds wait{30};  // how long what was only taken for a while may stay
};

// How much the counts of `look` grow by `batch`: by the first one whose growth `is_allowed` within
// the wait, or by the last one. `Counts` have an operator -; `before` are those from before the
// first batch.
template <class Counts, class Look, class Batch, class IsAllowed>
[[nodiscard]] Counts GrowthBy(Counts before, const Look& look, const Batch& batch,
                              const IsAllowed& is_allowed, GrowthPatience patience = {}) {
  Counts growth{};
  for (int batches = 0; batches < patience.batches; ++batches) {
    batch();
    const auto end = std::chrono::steady_clock::now() + patience.wait;
    Counts after = look();
    while (!is_allowed(after - before) && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      after = look();
    }
    growth = after - before;
    if (is_allowed(growth)) break;
    before = after;
  }
  return growth;
}

}  // namespace declarium
