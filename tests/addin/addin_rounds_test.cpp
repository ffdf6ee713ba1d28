// Connecting, inserting and disconnecting the program again and again: what that costs and leaves
// behind. DECLARIUM_ROUNDS sets how often.
#include <algorithm>
#include <cstdio>
#include <vector>

#include "addin/addin_fixture.h"
#include "host/rounds_growth.h"

namespace declarium {
namespace {

long long MedianOf(std::vector<long long> times) {
  std::ranges::sort(times);
  return times[times.size() / 2];
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
  ExpectRoundsLeaveNothing(program, host, RoundsWanted(kEnoughRounds), run);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_TRUE(Eventually([&] { return ide.Ask("objects") == 0; }));
  Disconnect(keeper);
}

// Loading is the same work in both connections of a round; only the first does it.
TEST_F(AddInRoundsTest, ConnectingAddsLittleToLoadingTheWindow) {
  const int rounds = RoundsWanted(10);
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
