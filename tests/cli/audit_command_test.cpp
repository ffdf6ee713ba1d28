#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class AuditCommand : public CliTest {
 protected:
  AuditCommand() {
    folder_.Put("Project1.vbp", "Module=Main; Main.bas\r\nModule=Api; Api.bas\r\n");
    // "Ž" in Windows-1250, which has to come through.
    folder_.Put("Main.bas",
                "Attribute VB_Name = \"Main\"\r\n"
                "Private Const LIMIT = 5\r\n"
                "Private Const UNUSED = 1\r\n"
                "Sub Run()\r\n"
                "  Debug.Print LIMIT, \"\x8E\"\r\n"
                "End Sub\r\n");
    folder_.Put("Api.bas",
                "Attribute VB_Name = \"Api\"\r\n"
                "Const LIMIT As Integer = 5\r\n"
                "Sub Walk()\r\n"
                "  Debug.Print LIMIT\r\n"
                "End Sub");
  }

  CliRun Audit(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"audit", Path("Project1.vbp"), "--against", library_});
    return RunCli(arguments);
  }
};

constexpr const char* kMainAfter =
    "Attribute VB_Name = \"Main\"\r\n"
    "Public Const LIMIT = 5\r\n"
    "Sub Run()\r\n"
    "  Debug.Print LIMIT, \"\x8E\"\r\n"
    "End Sub\r\n";

constexpr const char* kApiAfter =
    "Attribute VB_Name = \"Api\"\r\n"
    "Sub Walk()\r\n"
    "  Debug.Print LIMIT\r\n"
    "End Sub";

TEST_F(AuditCommand, AModuleWhoseHeaderHasNoEndKeepsWhatItMayUse) {
  folder_.Put("Project1.vbp", "Module=Main; Main.bas\r\nForm=Face.frm\r\n");
  folder_.Put("Main.bas", "Public Const UNUSED = 1\r\n");
  folder_.Put("Face.frm", "VERSION 5.00\r\nBegin VB.Form Face\r\n");
  const auto run = Audit({"--apply"});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find(Path("Face.frm") + ":3:1: expected End"), std::string::npos) << run.err;
  EXPECT_EQ(ContentOf(folder_ / "Main.bas"), "Public Const UNUSED = 1\r\n");
}

TEST_F(AuditCommand, ShowsEveryDeclarationWithItsUsersAndWhatIsToBeDone) {
  folder_.Put("empty.api", "");
  ASSERT_EQ(RunCli({"new", Path("empty.api"), "Empty", "--force"}).status, 0);
  const auto run = RunCli({"audit", Path("Project1.vbp"), "--against", Path("empty.api")});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out,
            Path("Main.bas") +
                ":2:15\tconst\tPrivate\tLIMIT\tused 1: Main\n"
                "    make it Public for all\n" +
                Path("Main.bas") +
                ":3:15\tconst\tPrivate\tUNUSED\tunused\n"
                "    note D601: UNUSED is not used\n"
                "    remove it\n" +
                Path("Api.bas") +
                ":2:7\tconst\tPrivate\tLIMIT\tused 1: Api\n"
                "    note D602: LIMIT is declared alike in Main:2; it could be Public once\n"
                "    remove it: Main has it for all\n");
}

TEST_F(AuditCommand, ApplyDoesWhatIsCertainAndTwiceNothingMore) {
  const auto run = Audit({"--apply"});
  EXPECT_NE(run.out.find("    done: remove it\n"), std::string::npos);
  EXPECT_EQ(Bytes("Main.bas"), kMainAfter);
  EXPECT_EQ(Bytes("Api.bas"), kApiAfter);
  // That it differs from the library stays.
  const auto again = Audit({"--apply"});
  EXPECT_EQ(again.out.find("done:"), std::string::npos);
  EXPECT_EQ(Bytes("Main.bas"), kMainAfter);
  EXPECT_EQ(Bytes("Api.bas"), kApiAfter);
}

TEST_F(AuditCommand, DiffShowsWhatApplyWouldDoAndDoesNothing) {
  const auto before = Bytes("Main.bas");
  const auto run = Audit({"--diff"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.out.starts_with("--- " + Path("Main.bas") + "\n")) << run.out;
  EXPECT_NE(run.out.find(
                "\n-Private Const LIMIT = 5\n+Public Const LIMIT = 5\n-Private Const UNUSED = 1\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("\n-Const LIMIT As Integer = 5\n"), std::string::npos);
  EXPECT_EQ(Bytes("Main.bas"), before);
}

TEST_F(AuditCommand, TheStatusIsOfTheFindingsThatAreLeft) {
  folder_.Put("Api.bas", "Const LIMIT As Integer = 6\r\nPrivate m(LIMIT)\r\n");
  EXPECT_EQ(Audit({"--apply", "--fail-on", "warning"}).status, 0);
  EXPECT_EQ(Audit({}).status, 1);
  EXPECT_EQ(Audit({"--fail-on", "error"}).status, 0);
}

TEST_F(AuditCommand, JsonHasTheTableAndTheFindings) {
  const auto run = Audit({"--format", "json"});
  std::istringstream lines(run.out);
  std::string line;
  std::getline(lines, line);
  const auto header = nlohmann::json::parse(line);
  EXPECT_EQ(header["command"], "audit");
  ASSERT_EQ(header["declarations"].size(), 3U);
  EXPECT_EQ(header["declarations"][0]["uses"][0]["line"], 5);
  EXPECT_TRUE(header["declarations"][1]["uses"].empty());
  std::size_t findings = 0;
  bool has_unused = false;
  for (; std::getline(lines, line); ++findings) {
    const auto finding = nlohmann::json::parse(line);
    if (finding["rule"] != "D601") continue;
    has_unused = true;
    EXPECT_EQ(finding["name"], "UNUSED");
    EXPECT_EQ(finding["action"], "remove it");
    EXPECT_EQ(finding["certain"], true);
  }
  EXPECT_EQ(header["findings"], findings);
  EXPECT_TRUE(has_unused);
}

TEST_F(AuditCommand, WhatDiffersFromTheLibraryComesWithTheLibrarysForm) {
  const auto run = Audit({"--format", "json"});
  EXPECT_NE(run.out.find("\"mended\":\"Private Const LIMIT As Long = MAX_PATH + 1"),
            std::string::npos)
      << run.out;
}

TEST_F(AuditCommand, ReplaceTakesTheLibrarysFormWhereItFits) {
  const std::string api =
      "Attribute VB_Name = \"Api\"\r\n"
      "Private Const LIMIT = 6\r\n"
      "Private Const MAX_PATH = 255 ' \x8E\r\n"
      "Sub Walk()\r\n"
      "  Debug.Print LIMIT, MAX_PATH\r\n"
      "End Sub\r\n";
  folder_.Put("Api.bas", api);
  EXPECT_EQ(Audit({"--apply"}).out.find("replace it"), std::string::npos);
  EXPECT_EQ(Bytes("Api.bas"), api) << "only when asked for";
  const auto difference = Audit({"--replace", "--diff"});
  EXPECT_NE(difference.out.find("\n-Private Const MAX_PATH = 255 ' \xC5\xBD\n"
                                "+Private Const MAX_PATH = 260 ' \xC5\xBD\n"),
            std::string::npos)
      << difference.out;
  EXPECT_EQ(Bytes("Api.bas"), api);
  const auto run = Audit({"--apply", "--replace"});
  EXPECT_NE(run.out.find("    done: replace it by the library's form\n"), std::string::npos);
  EXPECT_NE(run.out.find("    left: the library's form uses names that this one does not\n"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(Bytes("Api.bas"),
            api.substr(0, api.find("255")) + "260" + api.substr(api.find("255") + 3));
  const auto again = Audit({"--apply", "--replace"});
  EXPECT_EQ(again.out.find("done:"), std::string::npos);
}

TEST_F(AuditCommand, SarifHasTheRulesAndThePlaces) {
  const auto log = nlohmann::json::parse(Audit({"--format", "sarif"}).out);
  EXPECT_EQ(log["version"], "2.1.0");
  const auto& results = log["runs"][0]["results"];
  ASSERT_FALSE(results.empty());
  const auto rule = results[0]["ruleIndex"].get<std::size_t>();
  EXPECT_EQ(log["runs"][0]["tool"]["driver"]["rules"][rule]["id"], results[0]["ruleId"]);
}

TEST_F(AuditCommand, TheReportIsOneFileAndReplacesOnlyAReport) {
  EXPECT_EQ(Audit({"--format", "html", "-o", Path("report.html")}).status, 1);
  EXPECT_TRUE(Bytes("report.html").starts_with("<!DOCTYPE html>"));
  EXPECT_EQ(Audit({"--format", "html"}).out, Bytes("report.html"));
  EXPECT_EQ(Audit({"--format", "html", "-o", Path("report.html")}).status, 1);
  EXPECT_EQ(Audit({"--format", "html", "-o", Path("Main.bas")}).status, 3);
  EXPECT_EQ(Audit({"-o", Path("report.html")}).status, 2);
}

TEST_F(AuditCommand, WithAMissingModuleNothingIsChanged) {
  folder_.Put("Project1.vbp", "Module=Main; Main.bas\r\nModule=Gone; Gone.bas\r\n");
  const auto before = Bytes("Main.bas");
  EXPECT_EQ(Audit({"--apply"}).status, 3);
  EXPECT_EQ(Bytes("Main.bas"), before);
}

TEST_F(AuditCommand, AModuleOfTwoProjectsIsLeft) {
  folder_.Put("Other.vbp", "Module=Main; Main.bas\r\n");
  folder_.Put("Both.vbg", "VBGROUP 5.0\r\nStartupProject=Project1.vbp\r\nProject=Other.vbp\r\n");
  const auto before = Bytes("Main.bas");
  const auto run = RunCli({"audit", Path("Both.vbg"), "--against", library_, "--apply"});
  EXPECT_NE(run.out.find("left: another project has the module, too"), std::string::npos);
  EXPECT_EQ(Bytes("Main.bas"), before);
}

TEST_F(AuditCommand, AFileThatCannotBeWrittenBackIsNotChanged) {
  folder_.Put("Main.bas", "\xEF\xBB\xBFPrivate Const UNUSED = 1 ' \xFF\r\n");
  const auto before = Bytes("Main.bas");
  EXPECT_EQ(Audit({"--apply"}).status, 3);
  EXPECT_EQ(Bytes("Main.bas"), before);
}

TEST_F(AuditCommand, StandardInputCannotBeChanged) {
  EXPECT_EQ(RunCli({"audit", "-", "--apply"}).status, 2);
}

}  // namespace
}  // namespace declarium::cli
