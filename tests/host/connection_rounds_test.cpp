// Connecting, inserting and disconnecting again and again. DECLARIUM_ROUNDS sets how often.
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

#include "host/connection_fixture.h"

namespace declarium {
namespace {

int Rounds() {
  const char* rounds = std::getenv("DECLARIUM_ROUNDS");
  return rounds ? std::atoi(rounds) : 40;
}

TEST_F(Connection, ManyRoundsLeaveNothingBehindInEitherProcess) {
  // A second host keeps the add-in's process running, so that its growth can be seen.
  IdeProcess keeper;
  ASSERT_EQ(keeper.Tell(kConnect), "ok");
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  log_.Set(".text", kText);
  log_.Set(".answer", "yes");
  struct Resources {
    long long add_in_handles = 0, add_in_memory = 0, handles = 0, memory = 0;
  };
  int insertions = 0;
  const auto run = [&](int count) {
    for (int i = 0; i < count; ++i) {
      // The stand-in IDE keeps the names of all calls.
      ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
      ASSERT_EQ(ide.Tell("text Module1 Option Explicit"), "ok");
      ASSERT_EQ(ide.Tell(kConnect), "ok");
      ASSERT_EQ(ide.Tell("click Standard"), "ok");
      ++insertions;
      ASSERT_TRUE(Eventually([&] { return ide.Tell("lines Module1") != "ok Option Explicit"; }));
      ASSERT_EQ(ide.Tell(kDisconnect), "ok");
    }
  };
  const auto measure = [&] {
    Resources now;
    EXPECT_TRUE(log_.Comes("inserted", insertions));
    // The file is empty for a moment whenever the add-in writes it again.
    EXPECT_TRUE(Eventually([&] {
      return std::sscanf(log_.Get(".resources").c_str(), "%lld %lld", &now.add_in_handles,
                         &now.add_in_memory) == 2;
    }));
    EXPECT_GT(now.add_in_handles, 0);
    now.handles = ide.Ask("handles");
    now.memory = ide.Ask("memory");
    return now;
  };
  run(10);
  const Resources before = measure();
  const int rounds = Rounds();
  run(rounds);
  const Resources after = measure();
  std::printf(
      "rounds %d: add-in handles %lld to %lld, memory %lld to %lld; host handles %lld to "
      "%lld, memory %lld to %lld\n",
      rounds, before.add_in_handles, after.add_in_handles, before.add_in_memory,
      after.add_in_memory, before.handles, after.handles, before.memory, after.memory);
  // The system's own threads for calls between processes come and go, each with handles and a
  // stack; what a round leaves behind would add up.
  constexpr long long kHandleNoise = 16;
  constexpr long long kMemoryNoise = 8 << 20;
  EXPECT_LE(after.add_in_handles, before.add_in_handles + kHandleNoise);
  EXPECT_LE(after.handles, before.handles + kHandleNoise);
  EXPECT_LE(after.add_in_memory, before.add_in_memory + kMemoryNoise);
  EXPECT_LE(after.memory, before.memory + kMemoryNoise);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_EQ(ide.Ask("objects"), 0);
  ASSERT_EQ(keeper.Tell(kDisconnect), "ok");
}

}  // namespace
}  // namespace declarium
