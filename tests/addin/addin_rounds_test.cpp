// Connecting, inserting and disconnecting the program again and again: what that costs and leaves
// behind. DECLARIUM_ROUNDS sets how often.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "addin/addin_fixture.h"
#include "vbhost/process_resources.h"

namespace declarium {
namespace {

int Rounds() {
  const char* rounds = std::getenv("DECLARIUM_ROUNDS");
  return rounds ? std::atoi(rounds) : 10;
}

long long MedianOf(std::vector<long long> times) {
  std::ranges::sort(times);
  return times[times.size() / 2];
}

struct Holdings {
  long long handles = 0;
  long long memory = 0;
};

Holdings HoldingsOf(DWORD process) {
  return {vbhost::HandleCountOf(process), vbhost::MemoryOf(process)};
}

using AddInRoundsTest = AddInTest;

TEST_F(AddInRoundsTest, ManyRoundsLeaveNothingBehindInEitherProcess) {
  // A second host keeps the program's process running, so that its growth can be seen.
  IdeProcess keeper;
  Connect(keeper);
  ClickButton(keeper);
  AddConstant();
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  DWORD program = 0;
  GetWindowThreadProcessId(Main(), &program);
  const auto host = static_cast<DWORD>(ide.Ask("process"));
  const auto run = [&](int count) {
    for (int i = 0; i < count; ++i) {
      // The stand-in IDE keeps the names of all calls.
      ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
      ASSERT_EQ(ide.Tell("text Module1 Option Explicit"), "ok");
      ConnectAlso(ide);
      ASSERT_EQ(ide.Tell("click Standard"), "ok");
      Insert(IDYES);
      ASSERT_TRUE(ModuleBecomes(ide, "Option Explicit\\n" + kConstant));
      Disconnect(ide);
    }
  };
  run(5);
  const Holdings program_before = HoldingsOf(program);
  const Holdings host_before = HoldingsOf(host);
  const int rounds = Rounds();
  run(rounds);
  const Holdings program_after = HoldingsOf(program);
  const Holdings host_after = HoldingsOf(host);
  std::printf(
      "rounds %d: program handles %lld to %lld, memory %lld to %lld; host handles %lld to %lld, "
      "memory %lld to %lld\n",
      rounds, program_before.handles, program_after.handles, program_before.memory,
      program_after.memory, host_before.handles, host_after.handles, host_before.memory,
      host_after.memory);
  // The system's own threads for calls between processes come and go, each with handles and a
  // stack; what a round leaves behind would add up.
  constexpr long long kHandleNoise = 16;
  constexpr long long kMemoryNoise = 8 << 20;
  EXPECT_GT(program_before.handles, 0);
  EXPECT_LE(program_after.handles, program_before.handles + kHandleNoise);
  EXPECT_LE(host_after.handles, host_before.handles + kHandleNoise);
  EXPECT_LE(program_after.memory, program_before.memory + kMemoryNoise);
  EXPECT_LE(host_after.memory, host_before.memory + kMemoryNoise);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_TRUE(Eventually([&] { return ide.Ask("objects") == 0; }));
  Disconnect(keeper);
}

// Loading is the same work in both connections of a round; only the first does it.
TEST_F(AddInRoundsTest, ConnectingAddsLittleToLoadingTheWindow) {
  const int rounds = Rounds();
  std::vector<long long> with_loading;
  std::vector<long long> without;
  for (int i = 0; i < rounds; ++i) {
    IdeProcess ide;
    OpenModule(ide, "Option Explicit");
    Connect(ide);
    with_loading.push_back(ide.Ask("connection-time"));
    IdeProcess other;
    OpenModule(other, "Option Explicit");
    ConnectAlso(other);
    without.push_back(other.Ask("connection-time"));
    Disconnect(other);
    Disconnect(ide);
    ASSERT_TRUE(Ends());
  }
  const auto fastest = *std::ranges::min_element(without);
  std::printf(
      "rounds %d: OnConnection that loads the window, median %lld ms; with the window loaded, "
      "median %lld ms, fastest %lld ms\n",
      rounds, MedianOf(with_loading), MedianOf(without), fastest);
  // The round that was disturbed least: other tests run at the same time.
  EXPECT_LE(fastest, 300);
}

}  // namespace
}  // namespace declarium
