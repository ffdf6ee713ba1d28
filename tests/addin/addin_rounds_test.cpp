// Connecting, inserting and disconnecting the program again and again: what that leaves behind.
// DECLARIUM_ROUNDS sets how often.
#include "addin/addin_fixture.h"
#include "host/rounds_growth.h"

namespace declarium {
namespace {

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
      Insert(IDYES, u"Project1.Module1");
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

}  // namespace
}  // namespace declarium
