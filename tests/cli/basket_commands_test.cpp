#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class BasketCommands : public CliTest {};

TEST_F(BasketCommands, GroupsByKindAndAlphabet) {
  const auto run =
      RunCli({"basket", library_, "ResetAll", "Outer", "MAX_PATH", "LIMIT", "max_path"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            "Private Const LIMIT As Long = MAX_PATH + 1 'longest\n"
            "Private Const MAX_PATH = 260\n"
            "Private Declare Sub ResetAll Lib \"user32\" ()\n"
            "\n"
            "Private Type Outer\n\tInner As RECT\n\tUnknown As Missing\nEnd Type\n");
}

TEST_F(BasketCommands, ClosureAddsWhatItemsNeedAndTellsWhatIsMissing) {
  const auto run = RunCli({"basket", library_, "GetOuter", "--closure", "--json"});
  EXPECT_EQ(run.out.substr(run.out.find('\n') + 1),
            "{\"kind\":\"const\",\"name\":\"MAX_PATH\"}\n"
            "{\"kind\":\"declare\",\"name\":\"GetOuter\"}\n"
            "{\"kind\":\"type\",\"name\":\"Outer\"}\n"
            "{\"kind\":\"type\",\"name\":\"RECT\"}\n");
  EXPECT_EQ(run.err, "declarium-cli: not in the library: type:Missing, used by Outer\n");
}

TEST_F(BasketCommands, ScopeWordInAnyCaseIsWrittenAsTheLanguageWritesIt) {
  EXPECT_EQ(RunCli({"basket", library_, "HEX_TEN", "--scope", "public"}).out,
            "Public Const HEX_TEN = &H10\n");
  EXPECT_EQ(RunCli({"basket", library_, "HEX_TEN", "--scope", "friend"}).status, 2);
}

TEST_F(BasketCommands, TextIsInTheJsonHeader) {
  EXPECT_EQ(
      RunCli({"--json", "basket", library_, "HEX_TEN"}).out,
      "{\"declarium\":1,\"command\":\"basket\",\"text\":\"Private Const HEX_TEN = &H10\\r\\n\"}\n"
      "{\"kind\":\"const\",\"name\":\"HEX_TEN\"}\n");
}

TEST_F(BasketCommands, OutputGoesToAFileWithCrLf) {
  const auto run = RunCli({"basket", library_, "HEX_TEN", "-o", Path("out.bas")});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(Bytes("out.bas"), "Private Const HEX_TEN = &H10\r\n");
}

TEST_F(BasketCommands, AnEarlierLongerNameDoesNotAnswerForAShorterOne) {
  ASSERT_EQ(RunCli({"import", library_, "-"}, {.input = "Const LIMITS = 9\n"}).status, 0);
  EXPECT_EQ(RunCli({"basket", library_, "LIMITS", "LIMIT"}).out,
            "Private Const LIMIT As Long = MAX_PATH + 1 'longest\nPrivate Const LIMITS = 9\n");
}

TEST_F(BasketCommands, ClosurePutsConstantsBehindThoseTheirValuesName) {
  EXPECT_EQ(RunCli({"basket", library_, "LIMIT", "--closure"}).out,
            "Private Const MAX_PATH = 260\nPrivate Const LIMIT As Long = MAX_PATH + 1 'longest\n");
}

TEST_F(BasketCommands, InsertPutsTheTextBehindTheAttributes) {
  folder_.Put("mod.cls", "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"M\"\r\nOption Explicit\r\n");
  const auto run = RunCli({"insert", library_, Path("mod.cls"), "HEX_TEN"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "const:HEX_TEN\n");
  EXPECT_EQ(Bytes("mod.cls"),
            "VERSION 1.0 CLASS\r\nAttribute VB_Name = \"M\"\r\nPrivate Const HEX_TEN = &H10\r\n"
            "\r\nOption Explicit\r\n");
}

TEST_F(BasketCommands, InsertReplacesAFileThatIsNoModule) {
  folder_.Put("notes.txt", "Const OLD = 1\r\n");
  EXPECT_EQ(RunCli({"insert", library_, Path("notes.txt"), "HEX_TEN"}).status, 0);
  EXPECT_EQ(Bytes("notes.txt"), "Private Const HEX_TEN = &H10\r\n");
}

TEST_F(BasketCommands, InsertKeepsEveryByteOfTheModule) {
  std::string bytes = "Attribute VB_Name = \"M\"\r\n";
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  folder_.Put("mod.bas", bytes);
  ASSERT_EQ(RunCli({"insert", library_, Path("mod.bas"), "HEX_TEN"}).status, 0);
  const auto first_line = bytes.find("\r\n");
  EXPECT_EQ(Bytes("mod.bas"), bytes.substr(0, first_line + 2) + "Private Const HEX_TEN = &H10\r\n" +
                                  bytes.substr(first_line));
}

TEST_F(BasketCommands, InsertChangesNoModuleThatIsNoSource) {
  const std::pair<std::string, std::string> modules[] = {
      {"Dear all,\r\n", "is no Visual Basic source"}, {"Const A\x02\x02", "is a library"}};
  for (const auto& [bytes, reason] : modules) {
    folder_.Put("mod.bas", bytes);
    const auto run = RunCli({"insert", library_, Path("mod.bas"), "HEX_TEN"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err, "declarium-cli: " + Path("mod.bas") + ": " + reason +
                           "; --force inserts all the same\n");
    EXPECT_EQ(Bytes("mod.bas"), bytes);
    EXPECT_EQ(RunCli({"insert", library_, Path("mod.bas"), "HEX_TEN", "--force"}).status, 0);
    EXPECT_NE(Bytes("mod.bas"), bytes);
  }
}

TEST_F(BasketCommands, InsertKeepsEncodingMarkAndLineEndsAndTellsThem) {
  folder_.Put("mod.bas",
              "\xEF\xBB\xBF"
              "Attribute VB_Name = \"\xC4\x8D\"\nSub S()\n");
  const auto run = RunCli({"--json", "insert", library_, Path("mod.bas"), "HEX_TEN"});
  EXPECT_NE(run.out.find("\"text\":\"Private Const HEX_TEN = &H10\\n\",\"encoding\":\"utf-8\","
                         "\"mark\":true,\"line_ends\":\"lf\"}\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(Bytes("mod.bas"),
            "\xEF\xBB\xBF"
            "Attribute VB_Name = \"\xC4\x8D\"\n"
            "Private Const HEX_TEN = &H10\n\nSub S()\n");
}

TEST_F(BasketCommands, InsertWritesNothingThatTheModuleCannotKeep) {
  ASSERT_EQ(RunCli({"import", library_, "-"}, {.input = "Const C = \"\xE8\"\n"}).status, 0);
  folder_.Put("mod.bas", "Option Explicit\r\n");
  const auto run = RunCli({"insert", library_, Path("mod.bas"), "C", "--encoding", "windows-1252"});
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(run.err,
            "declarium-cli: " + Path("mod.bas") + ": windows-1252 does not have the character č\n");
  EXPECT_EQ(Bytes("mod.bas"), "Option Explicit\r\n");
  EXPECT_EQ(RunCli({"insert", library_, Path("mod.bas"), "C"}).status, 0);
}

TEST_F(BasketCommands, InsertInJsonNamesTheModule) {
  folder_.Put("notes.txt", "");
  const auto run = RunCli({"--json", "insert", library_, Path("notes.txt"), "HEX_TEN"});
  EXPECT_TRUE(run.out.starts_with("{\"declarium\":1,\"command\":\"insert\",\"module\":\""));
  EXPECT_NE(run.out.find("notes.txt\",\"text\":\"Private Const HEX_TEN = &H10\\r\\n\","
                         "\"encoding\":\"windows-1250\",\"mark\":false,\"line_ends\":\"crlf\"}\n"
                         "{\"kind\":\"const\",\"name\":\"HEX_TEN\"}\n"),
            std::string::npos);
}

TEST_F(BasketCommands, InsertIntoAMissingModuleFails) {
  const auto run = RunCli({"insert", library_, Path("none.bas"), "HEX_TEN"});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find("none.bas"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Path("none.bas")));
}

TEST_F(BasketCommands, AnUnknownNameLeavesTheModuleAlone) {
  folder_.Put("mod.bas", "x\r\n");
  EXPECT_EQ(RunCli({"insert", library_, Path("mod.bas"), "HEX_TEN", "none"}).status, 1);
  EXPECT_EQ(Bytes("mod.bas"), "x\r\n");
}

}  // namespace
}  // namespace declarium::cli
