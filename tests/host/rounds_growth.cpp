#include "host/rounds_growth.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>

#include "support/growth.h"
#include "vbhost/process_resources.h"

namespace declarium {
namespace {

constexpr int kWarmUp = 20;
// At rest the handles come back to the same number, or one beside it. Memory is counted in pages:
// batches of 40 rounds were seen to add up to 118 KB, less from batch to batch, and 1 000 rounds no
// more than 176 KB. A handle or 4 KB left on purpose in each round fails the tests, in either
// process.
constexpr long long kFewHandles = 8;
constexpr long long kFewBytesInARound = 3 * 1024;

struct Holdings {
  long long handles = 0;
  long long memory = 0;

  Holdings operator-(const Holdings& other) const {
    return {handles - other.handles, memory - other.memory};
  }
};

Holdings HoldingsOf(DWORD process) {
  return {vbhost::HandleCountOf(process), vbhost::MemoryOf(process)};
}

// True when something became less.
bool Lower(Holdings& lowest, const Holdings& now) {
  const bool lower = now.handles < lowest.handles || now.memory < lowest.memory;
  lowest = {std::min(lowest.handles, now.handles), std::min(lowest.memory, now.memory)};
  return lower;
}

struct BothHoldings {
  Holdings add_in;
  Holdings host;

  BothHoldings operator-(const BothHoldings& other) const {
    return {add_in - other.add_in, host - other.host};
  }
};

// What both hold at rest. The system keeps threads for calls between processes, which take up to 50
// handles and 5 MB while rounds are made, and ends them some seconds after their last call
// (Wine 8.0: 5); taking too much for rest would only hide some of the growth.
BothHoldings AtRest(const std::function<BothHoldings()>& look) {
  constexpr std::chrono::seconds kQuiet(7);
  BothHoldings lowest = look();
  auto begin = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - begin < kQuiet) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const BothHoldings now = look();
    const bool add_in_lower = Lower(lowest.add_in, now.add_in);
    if (Lower(lowest.host, now.host) || add_in_lower) begin = std::chrono::steady_clock::now();
  }
  return lowest;
}

void Print(const char* process, const Holdings& before, const Holdings& growth) {
  std::printf("; %s handles %lld and %lld more, memory %lld and %lld more", process, before.handles,
              growth.handles, before.memory, growth.memory);
}

}  // namespace

int RoundsWanted(int otherwise) {
  const char* rounds = std::getenv("DECLARIUM_ROUNDS");
  return rounds ? std::atoi(rounds) : otherwise;
}

void ExpectRoundsLeaveNothing(DWORD add_in, DWORD host, int rounds,
                              const std::function<void(int rounds)>& run) {
  const auto look = [&] { return BothHoldings{HoldingsOf(add_in), HoldingsOf(host)}; };
  const auto is_allowed = [rounds](const Holdings& growth) {
    return growth.handles <= kFewHandles && growth.memory <= rounds * kFewBytesInARound;
  };
  run(kWarmUp);
  const BothHoldings before = AtRest(look);
  for (const auto& holdings : {before.add_in, before.host}) {
    ASSERT_GT(holdings.handles, 0);
    ASSERT_GT(holdings.memory, 0);
  }
  int run_in_all = 0;
  const BothHoldings growth = GrowthBy(
      before, look,
      [&] {
        if (!testing::Test::HasFatalFailure()) run(rounds);
        run_in_all += rounds;
      },
      [&](const BothHoldings& both) {
        return testing::Test::HasFatalFailure() ||
               (is_allowed(both.add_in) && is_allowed(both.host));
      });
  std::printf("%d rounds, the last %d counted", run_in_all, rounds);
  Print("add-in", before.add_in, growth.add_in);
  Print("host", before.host, growth.host);
  std::printf("\n");
  EXPECT_TRUE(is_allowed(growth.add_in));
  EXPECT_TRUE(is_allowed(growth.host));
}

}  // namespace declarium
