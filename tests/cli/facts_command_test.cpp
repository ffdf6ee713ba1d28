#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class FactsCommand : public CliTest {
 protected:
  FactsCommand() {
    folder_.Put("sample.facts",
                "Declarium facts 1\n"
                "c\tlimit\tsample.h\n"
                "d\tgetouter\tsample.h\tuser32\t\t5.1.2600 metadata\te\tclose=ResetAll\t"
                "||BOOL\thWnd|i?|HWND|LIMITS|LongPtr\tlpOuter|io|OUTER *||*\n"
                "s\tLIMITS\tf\tHEX_TEN MISSING\tLIMIT\n"
                "t\touter\tsample.h\tInner||RECT\tUnknown||DWORD|LIMITS\n");
  }
};

TEST_F(FactsCommand, ShowsWhatIsKnownOfAProcedure) {
  EXPECT_EQ(RunCli({"facts", library_, "getouter"}).out,
            "declare:GetOuter\n"
            "dll\tuser32\n"
            "header\tsample.h\n"
            "since\t5.1.2600 (metadata)\n"
            "last error\tyes\n"
            "close\tResetAll\n"
            "parameter\thWnd: HWND, in, in 64 bits LongPtr, optional\n"
            "  flags\tHEX_TEN MISSING\n"
            "  by prefix\tLIMIT\n"
            "parameter\tlpOuter: OUTER *, inout\n");
}

TEST_F(FactsCommand, ShowsMembersAndConstants) {
  EXPECT_EQ(RunCli({"facts", library_, "LIMIT"}).out, "const:LIMIT\nheader\tsample.h\n");
  EXPECT_EQ(RunCli({"facts", library_, "Outer"}).out,
            "type:Outer\n"
            "header\tsample.h\n"
            "member\tInner: RECT\n"
            "member\tUnknown: DWORD\n"
            "  flags\tHEX_TEN MISSING\n"
            "  by prefix\tLIMIT\n");
}

TEST_F(FactsCommand, TellsTheSameInJson) {
  EXPECT_EQ(RunCli({"--json", "facts", library_, "GetOuter"}).out,
            "{\"declarium\":1,\"command\":\"facts\",\"kind\":\"declare\",\"name\":\"GetOuter\","
            "\"dll\":\"user32\",\"header\":\"sample.h\",\"since\":\"5.1.2600\","
            "\"since_source\":\"metadata\",\"last_error\":true,"
            "\"related\":{\"close\":[\"ResetAll\"]}}\n"
            "{\"name\":\"hWnd\",\"c_type\":\"HWND\",\"direction\":\"in\",\"type64\":\"LongPtr\","
            "\"constants\":[\"HEX_TEN\",\"MISSING\"],\"by_prefix\":[\"LIMIT\"],\"flags\":true,"
            "\"optional\":true}\n"
            "{\"name\":\"lpOuter\",\"c_type\":\"OUTER *\",\"direction\":\"inout\","
            "\"type64\":\"Outer\",\"constants\":[]}\n");
}

TEST_F(FactsCommand, ARowOfWhichNothingIsKnownIsNotFound) {
  const auto run = RunCli({"facts", library_, "ResetAll"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "declarium-cli: nothing is known of declare:ResetAll\n");
}

TEST_F(FactsCommand, ALibraryWithoutFactsAndAFileThatHasNoneAreFailures) {
  folder_.Put("sample.facts", "something else");
  const auto other = RunCli({"facts", library_, "GetOuter"});
  EXPECT_EQ(other.status, 3);
  EXPECT_TRUE(other.err.ends_with("sample.facts: is no facts file\n")) << other.err;
  std::filesystem::remove(folder_ / "sample.facts");
  const auto none = RunCli({"--json", "facts", library_, "GetOuter"});
  EXPECT_EQ(none.status, 3);
  EXPECT_EQ(none.out, "");
  EXPECT_TRUE(none.err.contains("sample.facts: ")) << none.err;
}

TEST_F(FactsCommand, AnUnknownNameSuggestsTheNearest) {
  EXPECT_EQ(RunCli({"facts", library_, "LIMTI"}).err,
            "declarium-cli: no item named LIMTI; did you mean const:LIMIT?\n");
}

TEST_F(FactsCommand, ControlCharactersOfTheFileDoNotReachTheTerminal) {
  folder_.Put("sample.facts", "Declarium facts 1\nc\tlimit\tsam\x1B[31mple.h\n");
  EXPECT_EQ(RunCli({"facts", library_, "LIMIT"}).out, "const:LIMIT\nheader\tsam\\x1B[31mple.h\n");
}

TEST_F(FactsCommand, SharedAddsTheConstantsThatBelongToParametersAndMembers) {
  EXPECT_EQ(RunCli({"shared", library_, "GetOuter", "--closure", "--constants"}).out,
            "type:Outer\tlevel 1\tvia GetOuter\n"
            "const:HEX_TEN\tlevel 1\tvia GetOuter\n"
            "const:LIMIT\tlevel 1\tvia GetOuter\n"
            "type:Missing\tlevel 2\tvia Outer\tnot in the library\n"
            "type:RECT\tlevel 2\tvia Outer\n"
            "const:MAX_PATH\tlevel 2\tvia LIMIT\n");
}

TEST_F(FactsCommand, ConstantsAreAddedToAClosureOnlyAndWithFactsOnly) {
  EXPECT_EQ(RunCli({"shared", library_, "GetOuter", "--constants"}).status, 2);
  std::filesystem::remove(folder_ / "sample.facts");
  const auto run = RunCli({"--json", "shared", library_, "GetOuter", "--closure", "--constants"});
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(run.out, "");
}

}  // namespace
}  // namespace declarium::cli
