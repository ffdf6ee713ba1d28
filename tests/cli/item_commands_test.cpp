#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class ItemCommands : public CliTest {};

TEST_F(ItemCommands, ShowLooksInConstsFirst) {
  EXPECT_EQ(RunCli({"show", library_, "rect"}).out, "Const RECT = 7\n");
}

TEST_F(ItemCommands, ShowTakesTheKindInFront) {
  EXPECT_EQ(RunCli({"show", library_, "Type:rect"}).out,
            "Type RECT\n\tLeft As Long\n\tName As String * MAX_PATH\nEnd Type\n");
}

TEST_F(ItemCommands, ShowKeepsTheOrderOfTheNames) {
  EXPECT_EQ(RunCli({"show", library_, "MAX_PATH", "HEX_TEN"}).out,
            "Const MAX_PATH = 260\nConst HEX_TEN = &H10\n");
}

TEST_F(ItemCommands, ACommandsWordIsANameBehindTheCommand) {
  EXPECT_EQ(RunCli({"show", library_, "list"}).status, 1);
}

TEST_F(ItemCommands, ColorOnlyOnATerminalAndNeverAgainstTheUsersWish) {
  const std::vector<std::string> show = {"show", library_, "HEX_TEN"};
  const std::string plain = "Const HEX_TEN = &H10\n";
  const std::string colored = "\x1B[94mConst\x1B[0m HEX_TEN = &H10\n";
  EXPECT_EQ(RunCli(show).out, plain);
  EXPECT_EQ(RunCli(show, {.out_is_terminal = true}).out, colored);
  EXPECT_EQ(RunCli(show, {.out_is_terminal = true, .no_color = true}).out, plain);
  EXPECT_EQ(
      RunCli({"show", library_, "HEX_TEN", "--color", "never"}, {.out_is_terminal = true}).out,
      plain);
  EXPECT_EQ(RunCli({"--color", "always", "show", library_, "HEX_TEN"}, {.no_color = true}).out,
            colored);
}

TEST_F(ItemCommands, ColoredTextWithoutItsColorsIsThePlainText) {
  folder_.Put("lone.bas", "Declare Sub A Lib \"x\" ( ByVal b As Long, ( ) 'end\r\n");
  ASSERT_EQ(RunCli({"import", library_, Path("lone.bas")}).status, 0);
  auto colored = RunCli({"show", library_, "A", "--color", "always"}).out;
  for (const std::string escape : {"\x1B[94m", "\x1B[32m", "\x1B[0m"}) {
    for (auto at = colored.find(escape); at != colored.npos; at = colored.find(escape)) {
      colored.erase(at, escape.size());
    }
  }
  EXPECT_EQ(colored, RunCli({"show", library_, "A"}).out);
}

TEST_F(ItemCommands, ShowGivesCodeAndRunsInJson) {
  EXPECT_EQ(
      RunCli({"--json", "show", library_, "LIMIT"}).out,
      "{\"declarium\":1,\"command\":\"show\"}\n"
      "{\"kind\":\"const\",\"name\":\"LIMIT\",\"code\":\"Const LIMIT As Long = MAX_PATH + 1 "
      "'longest\",\"runs\":[[\"keyword\",\"Const\"],[\"normal\",\" LIMIT \"],[\"keyword\",\"As\"]"
      ",[\"normal\",\" \"],[\"keyword\",\"Long\"],[\"normal\",\" = MAX_PATH + 1 \"],"
      "[\"comment\",\"'longest\"]]}\n");
}

TEST_F(ItemCommands, AnUnknownNameShowsNothingAndSuggestsTheNearest) {
  const auto run = RunCli({"show", library_, "MAX_PATH", "GetOutre", "LIMTI"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "declarium-cli: no item named GetOutre; did you mean declare:GetOuter?\n"
            "declarium-cli: no item named LIMTI; did you mean const:LIMIT?\n");
}

TEST_F(ItemCommands, ANameOfAnotherKindIsUnknown) {
  EXPECT_EQ(RunCli({"show", library_, "declare:LIMIT"}).err,
            "declarium-cli: no item named declare:LIMIT\n");
}

TEST_F(ItemCommands, SharedListsOneLevelAndWhatIsMissing) {
  EXPECT_EQ(RunCli({"shared", library_, "Outer"}).out,
            "type:Missing\tnot in the library\ntype:RECT\n");
}

TEST_F(ItemCommands, SharedFollowsReferences) {
  EXPECT_EQ(RunCli({"shared", library_, "GetOuter", "--closure"}).out,
            "type:Outer\tlevel 1\tvia GetOuter\n"
            "type:Missing\tlevel 2\tvia Outer\tnot in the library\n"
            "type:RECT\tlevel 2\tvia Outer\n"
            "const:MAX_PATH\tlevel 3\tvia RECT\n");
}

TEST_F(ItemCommands, SharedInJson) {
  EXPECT_EQ(RunCli({"--json", "shared", library_, "outer"}).out,
            "{\"declarium\":1,\"command\":\"shared\",\"kind\":\"type\",\"name\":\"Outer\"}\n"
            "{\"kind\":\"type\",\"name\":\"Missing\",\"found\":false}\n"
            "{\"kind\":\"type\",\"name\":\"RECT\",\"found\":true}\n");
}

TEST_F(ItemCommands, SharedClosureInJson) {
  EXPECT_EQ(
      RunCli({"--json", "shared", library_, "type:rect", "--closure"}).out,
      "{\"declarium\":1,\"command\":\"shared\",\"kind\":\"type\",\"name\":\"RECT\"}\n"
      "{\"kind\":\"const\",\"name\":\"MAX_PATH\",\"found\":true,\"level\":1,\"via\":\"RECT\"}\n");
}

TEST_F(ItemCommands, AnItemThatNeedsNothingIsNoFailure) {
  const auto run = RunCli({"shared", library_, "ResetAll"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
}

}  // namespace
}  // namespace declarium::cli
