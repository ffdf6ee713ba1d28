// Connecting, inserting and disconnecting again and again. DECLARIUM_ROUNDS sets how often.
#include <gtest/gtest.h>

#include "host/connection_fixture.h"
#include "host/rounds_growth.h"

namespace declarium {
namespace {

TEST_F(Connection, ManyRoundsLeaveNothingBehindInEitherProcess) {
  // A second host keeps the add-in's process running, so that its growth can be seen.
  IdeProcess keeper;
  ASSERT_EQ(keeper.Tell(kConnect), "ok");
  IdeProcess ide;
  OpenModule(ide, "Option Explicit");
  log_.Set(".text", kText);
  log_.Set(".answer", "yes");
  const auto run = [&](int count) {
    for (int i = 0; i < count; ++i) {
      // The stand-in IDE keeps the names of all calls.
      ASSERT_EQ(ide.Tell("calls reset"), "ok 0");
      ASSERT_EQ(ide.Tell("text Module1 Option Explicit"), "ok");
      ASSERT_EQ(ide.Tell(kConnect), "ok");
      ASSERT_EQ(ide.Tell("click Standard"), "ok");
      ASSERT_TRUE(Eventually([&] { return ide.Tell("lines Module1") != "ok Option Explicit"; }));
      ASSERT_EQ(ide.Tell(kDisconnect), "ok");
    }
  };
  const auto host = static_cast<DWORD>(ide.Ask("process"));
  ExpectRoundsLeaveNothing(log_.Process(), host, RoundsWanted(kEnoughRounds), run);
  EXPECT_EQ(ide.Tell("controls"), "ok ");
  EXPECT_EQ(ide.Ask("sinks"), 0);
  EXPECT_TRUE(Eventually([&] { return ide.Ask("objects") == 0; }));
  ASSERT_EQ(keeper.Tell(kDisconnect), "ok");
}

}  // namespace
}  // namespace declarium
