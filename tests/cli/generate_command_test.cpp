#include <filesystem>
#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class GenerateCommand : public CliTest {
 protected:
  GenerateCommand() { Put("#library sample.api\n' what the program calls\nGetOuter\nLIMIT\n"); }

  void Put(std::string_view list) { folder_.Put("Api.list", list); }

  CliRun Generate(std::vector<std::string> arguments = {}) const {
    arguments.insert(arguments.begin(), {"generate", Path("Api.list"), "-o", Path("Api.bas")});
    return RunCli(arguments);
  }

  [[nodiscard]] bool HasModule() const { return std::filesystem::exists(folder_ / "Api.bas"); }
};

TEST_F(GenerateCommand, WritesTheModuleWithAllThatTheNamesNeed) {
  const auto run = Generate();
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, Path("Api.bas") + "\n");
  EXPECT_NE(run.err.find("not in the library: type:Missing, used by Outer"), std::string::npos);
  const auto bytes = Bytes("Api.bas");
  EXPECT_TRUE(bytes.starts_with(
      "Attribute VB_Name = \"Api\"\r\n"
      "' Made by declarium-cli generate from Api.list. Change the list, not this module.\r\n"
      "' Library: Sample (sample.api), content "));
  EXPECT_TRUE(bytes.ends_with(
      "' Target: vb6\r\n"
      "Option Explicit\r\n"
      "\r\n"
      "Public Const MAX_PATH = 260\r\n"
      "Public Const LIMIT As Long = MAX_PATH + 1 'longest\r\n"
      "Public Declare Function GetOuter Lib \"user32\" (ByVal hWnd As Long, lpOuter As Outer) As "
      "Long\r\n"
      "\r\n"
      "Public Type RECT\r\n"
      "\tLeft As Long\r\n"
      "\tName As String * MAX_PATH\r\n"
      "End Type\r\n"
      "\r\n"
      "Public Type Outer\r\n"
      "\tInner As RECT\r\n"
      "\tUnknown As Missing\r\n"
      "End Type\r\n"))
      << bytes;
}

TEST_F(GenerateCommand, TwiceGivesTheSameBytesWhereverTheListStands) {
  Generate();
  const auto first = Bytes("Api.bas");
  std::filesystem::create_directory(folder_ / "copy");
  for (const auto* const name : {"Api.list", "sample.api"})
    std::filesystem::copy(folder_ / name, folder_ / "copy" / name);
  const auto list = PathText(folder_ / "copy" / "Api.list");
  EXPECT_EQ(RunCli({"generate", list, "-o", PathText(folder_ / "copy" / "Api.bas")}).status, 0);
  EXPECT_EQ(ContentOf(folder_ / "copy" / "Api.bas"), first);
  Generate();
  EXPECT_EQ(Bytes("Api.bas"), first);
}

TEST_F(GenerateCommand, CheckSaysByItsStatusWhetherTheModuleIsWhatTheListGives) {
  Generate();
  const auto same = Generate({"--check"});
  EXPECT_EQ(same.status, 0);
  EXPECT_EQ(same.out, "");
  Put("#library sample.api\nGetOuter\nLIMIT\nHEX_TEN\n");
  const auto before = Bytes("Api.bas");
  const auto other = Generate({"--check"});
  EXPECT_EQ(other.status, 1);
  EXPECT_NE(other.out.find("\n+Public Const HEX_TEN = &H10\n"), std::string::npos) << other.out;
  EXPECT_TRUE(other.out.starts_with("--- " + Path("Api.bas") + "\n"));
  EXPECT_EQ(Bytes("Api.bas"), before);
  Generate();
  EXPECT_EQ(Generate({"--check"}).status, 0);
}

TEST_F(GenerateCommand, CheckOfAModuleThatIsMissingShowsItWhole) {
  const auto run = Generate({"--check"});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.out.find("@@ -0,0 +1,"), std::string::npos);
  EXPECT_FALSE(HasModule());
}

TEST_F(GenerateCommand, CheckTellsOfOtherLineEnds) {
  Generate();
  auto bytes = Bytes("Api.bas");
  std::erase(bytes, '\r');
  folder_.Put("Api.bas", bytes);
  const auto run = Generate({"--check"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("only the line ends differ"), std::string::npos);
}

TEST_F(GenerateCommand, TheListMayNameItsModuleAndTarget) {
  Put("#library sample.api\n#target vba7-only\n#module src/Api.bas\nResetAll");
  std::filesystem::create_directory(folder_ / "src");
  EXPECT_EQ(RunCli({"generate", Path("Api.list")}).status, 0);
  const auto bytes = ContentOf(folder_ / "src" / "Api.bas");
  EXPECT_NE(bytes.find("Public Declare PtrSafe Sub ResetAll"), std::string::npos);
  EXPECT_EQ(RunCli({"generate", Path("Api.list"), "--check"}).status, 0);
  EXPECT_EQ(RunCli({"generate", Path("Api.list"), "--check", "--target", "vb6"}).status, 1);
}

TEST_F(GenerateCommand, AnUnknownNameIsToldWithItsLineAndNothingIsWritten) {
  Put("#library sample.api\nMAX_PATH\nGetOutr\nHEX_*\n-MAX_PTH\n-LIMIT\nWM_*\n");
  const auto run = Generate();
  EXPECT_EQ(run.status, 1);
  const auto list = Path("Api.list");
  EXPECT_EQ(run.err, "declarium-cli: " + list +
                         ":3: no item named GetOutr; did you mean declare:GetOuter?\n"
                         "declarium-cli: " +
                         list +
                         ":5: no item named MAX_PTH; did you mean const:MAX_PATH?\n"
                         "declarium-cli: " +
                         list +
                         ":6: nothing above gives LIMIT to take away\n"
                         "declarium-cli: " +
                         list + ":7: no item fits WM_*\n");
  EXPECT_FALSE(HasModule());
}

TEST_F(GenerateCommand, WhatTheListSaysWrongIsToldWithItsLine) {
  Put("#libary sample.api\nMAX_PATH\n#target vb7\n");
  const auto run = Generate();
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find(":1: #libary is none of"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find(":3: vb7 is none of"), std::string::npos);
  EXPECT_FALSE(HasModule());
}

TEST_F(GenerateCommand, AListWithoutAnItemMakesNoModule) {
  Put("#library sample.api\n' nothing yet\n");
  EXPECT_EQ(Generate().status, 1);
  EXPECT_FALSE(HasModule());
}

TEST_F(GenerateCommand, LibraryAndModuleHaveToBeNamed) {
  Put("MAX_PATH\n");
  EXPECT_EQ(Generate().status, 2);
  EXPECT_EQ(Generate({"--library", library_}).status, 0);
  EXPECT_EQ(RunCli({"generate", Path("Api.list"), "--library", library_}).status, 2);
}

TEST_F(GenerateCommand, TheModuleNeedsANameThatTheHostTakes) {
  for (const auto* const name : {"my-api.bas", "1.bas", "Api.cls", "Api.txt", "Sub.bas",
                                 "A2345678901234567890123456789012.bas"}) {
    const auto run = RunCli({"generate", Path("Api.list"), "-o", Path(name)});
    EXPECT_EQ(run.status, 2) << name;
    EXPECT_FALSE(std::filesystem::exists(folder_ / name));
  }
}

TEST_F(GenerateCommand, AModuleWithCodeIsNotReplaced) {
  folder_.Put("Api.bas", "Sub Main()\r\nEnd Sub\r\n");
  EXPECT_EQ(Generate().status, 3);
  EXPECT_EQ(Bytes("Api.bas"), "Sub Main()\r\nEnd Sub\r\n");
  EXPECT_EQ(Generate({"--force"}).status, 0);
  EXPECT_NE(Bytes("Api.bas").find("LIMIT"), std::string::npos);
}

TEST_F(GenerateCommand, AFileThatIsNotThereIsTold) {
  EXPECT_EQ(RunCli({"generate", Path("none.list"), "-o", Path("Api.bas")}).status, 3);
  Put("#library none.api\nMAX_PATH\n");
  EXPECT_EQ(Generate().status, 3);
}

TEST_F(GenerateCommand, JsonHasTheModulesAndTheItems) {
  Put("#library sample.api\nHEX_TEN\n");
  const auto run = Generate({"--json"});
  EXPECT_TRUE(run.out.starts_with("{\"declarium\":1,\"command\":\"generate\",\"modules\":[\""));
  EXPECT_TRUE(run.out.ends_with("\n{\"kind\":\"const\",\"name\":\"HEX_TEN\"}\n")) << run.out;
  EXPECT_NE(Generate({"--json", "--check"}).out.find("\"differs\":false"), std::string::npos);
}

TEST_F(GenerateCommand, MoreThanAModuleTakesBecomesSeveralAndWhatIsLeftOverIsTold) {
  std::string source;
  std::string list = "#library big.api\nP*\n";
  for (int i = 0; i < 1600; ++i)
    source += "Declare Sub P" + std::to_string(i) + " Lib \"dll\" ()\r\n";
  folder_.Put("big.bas", source);
  ASSERT_EQ(RunCli({"import", Path("big.api"), Path("big.bas"), "--create", "Big"}).status, 0);
  Put(list);
  EXPECT_EQ(Generate().out, Path("Api.bas") + "\n" + Path("Api2.bas") + "\n");
  EXPECT_TRUE(Bytes("Api2.bas").starts_with("Attribute VB_Name = \"Api2\"\r\n"));
  EXPECT_EQ(Generate({"--check"}).status, 0);
  Put("#library big.api\nP1*\n");
  const auto less = Generate();
  EXPECT_EQ(less.status, 0);
  EXPECT_NE(less.err.find("Api2.bas: is left of an earlier list; remove it"), std::string::npos);
  EXPECT_EQ(Generate({"--check"}).status, 1);
}

}  // namespace
}  // namespace declarium::cli
