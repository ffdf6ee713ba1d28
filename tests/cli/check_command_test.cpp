#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "cli/library_fixture.h"

#include "check/rule.h"
#include "text/text.h"

namespace declarium::cli {
namespace {

using nlohmann::json;

// A library that knows the procedure S and the constant LIMIT.
class CheckCommand : public CliTest {
 protected:
  CheckCommand() {
    folder_.Put("known.bas",
                "Declare Sub S Lib \"user32\" (ByVal n As Long)\r\n"
                "Public Const LIMIT As Long = 261\r\n");
    EXPECT_EQ(RunCli({"import", known_, Path("known.bas"), "--create", "Known"}).status, 0);
    folder_.Put("known.facts",
                "Declarium facts 1\n"
                "d\ts\tsample.h\tuser32\t\t\t\t\t\tn|i|DWORD\n");
  }

  std::vector<json> Objects(const std::string& text) {
    std::vector<json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
    return objects;
  }

  std::string known_ = Path("known.api");
  const std::string wrong_ = "Declare Sub S Lib \"user32\" (n As Long)\r\n";
};

TEST_F(CheckCommand, PrintsPlaceLevelRuleAndTheBetterLine) {
  folder_.Put("m.bas", "Option Explicit\r\n" + wrong_);
  const auto run = RunCli({"check", Path("m.bas"), "--against", known_});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, Path("m.bas") +
                         ":2:29: error D302: the procedure takes the value of n, not its address: "
                         "ByVal is missing\n"
                         "    better: Declare Sub S Lib \"user32\" (ByVal n As Long)\n");
}

TEST_F(CheckCommand, TellsTheSameInJson) {
  folder_.Put("m.bas", wrong_);
  const auto run = RunCli({"check", Path("m.bas"), "--against", known_, "--format", "json"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(RunCli({"--json", "check", Path("m.bas"), "--against", known_}).out, run.out);
  const auto objects = Objects(run.out);
  ASSERT_EQ(objects.size(), 2u);
  EXPECT_EQ(objects[0], (json{{"declarium", 1}, {"command", "check"}, {"findings", 1}}));
  EXPECT_EQ(objects[1], (json{{"source", Path("m.bas")},
                              {"line", 1},
                              {"column", 29},
                              {"rule", "D302"},
                              {"level", "error"},
                              {"name", "S"},
                              {"message",
                               "the procedure takes the value of n, not its address: ByVal is "
                               "missing"},
                              {"mended", "Declare Sub S Lib \"user32\" (ByVal n As Long)"}}));
}

TEST_F(CheckCommand, SarifHasTheRulesAndTheResults) {
  folder_.Put("a b.bas", wrong_ + "Const LIMIT As Long = 5\r\n");
  const auto run = RunCli({"check", Path("a b.bas"), "--against", known_, "--format", "sarif"});
  EXPECT_EQ(run.status, 1);
  const auto log = json::parse(run.out);
  EXPECT_EQ(log.at("version"), "2.1.0");
  ASSERT_EQ(log.at("runs").size(), 1u);
  const auto& rules = log["runs"][0].at("tool").at("driver").at("rules");
  EXPECT_EQ(rules.size(), check::Rules().size());
  const std::set<std::string> levels = {"error", "warning", "note"};
  for (const auto& rule : rules) {
    EXPECT_TRUE(levels.contains(rule.at("defaultConfiguration").at("level")));
    EXPECT_FALSE(rule.at("shortDescription").at("text").get<std::string>().empty());
  }
  const auto& results = log["runs"][0].at("results");
  ASSERT_EQ(results.size(), 3u);
  for (const auto& result : results) {
    EXPECT_EQ(rules.at(result.at("ruleIndex").get<std::size_t>()).at("id"), result.at("ruleId"));
    EXPECT_TRUE(levels.contains(result.at("level")));
    EXPECT_FALSE(result.at("message").at("text").get<std::string>().empty());
    const auto& place = result.at("locations").at(0).at("physicalLocation");
    EXPECT_THAT(place.at("artifactLocation").at("uri").get<std::string>(),
                testing::AllOf(testing::StartsWith("file://"), testing::EndsWith("a%20b.bas")));
    EXPECT_GE(place.at("region").at("startLine").get<int>(), 1);
    EXPECT_GE(place.at("region").at("startColumn").get<int>(), 1);
  }
  const auto& fix = results[0].at("fixes").at(0).at("artifactChanges").at(0);
  EXPECT_EQ(fix.at("replacements").at(0).at("insertedContent").at("text"), "ByVal ");
}

TEST_F(CheckCommand, TheExitStatusFollowsFailOn) {
  const std::map<std::string, std::string> sources = {
      {"error.bas", wrong_},
      {"warning.bas", "Public Const MASK As Long = &HFFFF\r\n"},
      {"note.bas", "Public Const LIMIT As Long = 5\r\n"},
      {"clean.bas", "Public Const LIMIT As Long = 261\r\n"}};
  for (const auto& [name, source] : sources) folder_.Put(name, source);
  const auto status = [&](const std::string& name, std::vector<std::string> more) {
    more.insert(more.begin(), {"check", Path(name), "--against", known_});
    return RunCli(more).status;
  };
  EXPECT_EQ(status("error.bas", {"--fail-on", "error"}), 1);
  EXPECT_EQ(status("warning.bas", {"--fail-on", "error"}), 0);
  EXPECT_EQ(status("warning.bas", {}), 1);
  EXPECT_EQ(status("note.bas", {}), 0);
  EXPECT_EQ(status("note.bas", {"--fail-on", "note"}), 1);
  EXPECT_EQ(status("clean.bas", {"--fail-on", "note"}), 0);
  EXPECT_EQ(status("missing.bas", {}), 3);
  EXPECT_EQ(RunCli({"check"}).status, 2);
  EXPECT_EQ(RunCli({"check", "--rules"}).status, 0);
  EXPECT_EQ(status("clean.bas", {"--fail-on", "nothing"}), 2);
}

TEST_F(CheckCommand, FixMendsWhatIsCertainAndNothingElse) {
  const std::string rest = "Public Const LIMIT As Long = 5 ' \xe8\r\n\tx =   1\r\n";
  folder_.Put("m.bas", wrong_ + rest);
  const auto run = RunCli({"check", Path("m.bas"), "--against", known_, "--fix"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(Bytes("m.bas"), "Declare Sub S Lib \"user32\" (ByVal n As Long)\r\n" + rest);
  EXPECT_THAT(run.out, testing::HasSubstr("    mended: Declare Sub S"));
  EXPECT_THAT(run.out, testing::HasSubstr("note D401"));
  const auto again = RunCli({"check", Path("m.bas"), "--against", known_, "--fix"});
  EXPECT_EQ(again.out.find("D302"), std::string::npos);
  EXPECT_EQ(Bytes("m.bas"), "Declare Sub S Lib \"user32\" (ByVal n As Long)\r\n" + rest);
}

TEST_F(CheckCommand, FixKeepsTheEncodingAndItsMark) {
  const auto unit = [](std::string_view text) {
    std::string bytes = "\xff\xfe";
    for (const char byte : text) bytes += {byte, '\0'};
    return bytes;
  };
  folder_.Put("m.bas", unit(wrong_));
  EXPECT_EQ(RunCli({"check", Path("m.bas"), "--against", known_, "--fix"}).status, 0);
  EXPECT_EQ(Bytes("m.bas"), unit("Declare Sub S Lib \"user32\" (ByVal n As Long)\r\n"));
}

TEST_F(CheckCommand, FixDoesNotTouchAFileThatItCannotWriteBack) {
  // No UTF-8, and a byte that Windows-1250 does not have is kept; an odd byte of UTF-16 is not.
  const std::string bytes = std::string("\xff\xfe", 2) + std::string("C\0o\0", 4) + "x";
  folder_.Put("odd.bas", bytes);
  EXPECT_EQ(RunCli({"check", Path("odd.bas"), "--against", known_, "--fix"}).status, 0);
  EXPECT_EQ(Bytes("odd.bas"), bytes);
}

TEST_F(CheckCommand, FixIsForModulesInFiles) {
  EXPECT_EQ(RunCli({"check", "-", "--fix"}).status, 2);
  EXPECT_EQ(RunCli({"check", known_, "--fix"}).status, 2);
}

TEST_F(CheckCommand, ABaselineKeepsWhatIsKnownQuiet) {
  folder_.Put("m.bas", wrong_);
  folder_.Put("base.jsonl", RunCli({"--json", "check", Path("m.bas"), "--against", known_}).out);
  // The same further down is known; another one is not.
  folder_.Put("m.bas", "Option Explicit\r\n\r\n" + wrong_);
  const std::vector<std::string> check = {"check", Path("m.bas"), "--against",
                                          known_,  "--baseline",  Path("base.jsonl")};
  auto run = RunCli(check);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "");
  folder_.Put("m.bas", wrong_ + "Declare Sub R Lib \"user32\" Alias \"S\" (n As Long)\r\n");
  run = RunCli(check);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, testing::HasSubstr(":2:39: error D302"));
  EXPECT_EQ(run.out.find(":1:29:"), std::string::npos);
}

TEST_F(CheckCommand, AFileThatIsNoBaselineIsRefused) {
  folder_.Put("m.bas", wrong_);
  for (const std::string text : {"", "text\n", "{\"command\":\"list\"}\n", "[]\n"}) {
    folder_.Put("base.jsonl", text);
    EXPECT_EQ(RunCli({"check", Path("m.bas"), "--baseline", Path("base.jsonl")}).status, 3) << text;
  }
  EXPECT_EQ(RunCli({"check", Path("m.bas"), "--baseline", Path("none.jsonl")}).status, 3);
}

TEST_F(CheckCommand, AProjectDecidesWhatAModuleCannot) {
  folder_.Put(
      "m.bas",
      "Attribute VB_Name = \"M\"\r\nPublic Const SPARE = 1\r\n"
      "Declare Sub R Lib \"mine\" (c As CELLS)\r\nSub Main()\r\n  R Nothing\r\nEnd Sub\r\n");
  folder_.Put("p.vbp", "Type=Exe\r\nModule=M; m.bas\r\n");
  const auto alone = RunCli({"check", Path("m.bas")});
  EXPECT_EQ(alone.status, 0);
  EXPECT_THAT(alone.out, testing::HasSubstr("note D103"));
  EXPECT_EQ(alone.out.find("D601"), std::string::npos);
  const auto project = RunCli({"check", Path("p.vbp")});
  EXPECT_EQ(project.status, 1);
  EXPECT_THAT(project.out, testing::HasSubstr("error D103"));
  EXPECT_THAT(project.out, testing::HasSubstr("note D601: SPARE"));
}

TEST_F(CheckCommand, AProjectWithOtherTypeLibrariesMayHaveTheType) {
  folder_.Put("m.bas",
              "Declare Sub R Lib \"mine\" (c As CELLS)\r\nSub M()\r\n  R 1\r\nEnd Sub\r\n");
  folder_.Put("p.vbp",
              "Type=Exe\r\nModule=M; m.bas\r\nReference=*\\G{00025E01-0000-0000-C000-000000000046}"
              "#5.0#0#dao360.dll#Data objects\r\n");
  EXPECT_EQ(RunCli({"check", Path("p.vbp")}).status, 0);
}

TEST_F(CheckCommand, AModuleThatIsMissingLeavesTheProjectOpen) {
  folder_.Put("m.bas", "Public Const SPARE = 1\r\n");
  folder_.Put("p.vbp", "Type=Exe\r\nModule=M; m.bas\r\nModule=N; n.bas\r\n");
  const auto run = RunCli({"check", Path("p.vbp")});
  EXPECT_EQ(run.status, 3);
  EXPECT_THAT(run.err, testing::HasSubstr("n.bas"));
  EXPECT_EQ(run.out, "");
}

TEST_F(CheckCommand, ALibraryIsCheckedByItsRows) {
  const auto run = RunCli({"check", library_, "--against", known_});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.find("D302"), std::string::npos);
  folder_.Put("wrong.bas", wrong_);
  const auto wrong = Path("wrong.api");
  ASSERT_EQ(RunCli({"import", wrong, Path("wrong.bas"), "--create", "W"}).status, 0);
  EXPECT_THAT(RunCli({"check", wrong, "--against", known_}).out,
              testing::HasSubstr(wrong + ":1:29: error D302"));
}

TEST_F(CheckCommand, WithoutLibrariesThoseBesideTheProgramTellWhatIsRight) {
  folder_.Put("m.bas", wrong_);
  EXPECT_EQ(RunCli({"check", Path("m.bas")}).status, 0);
  const auto run =
      RunCli({"check", Path("m.bas")}, {.program = std::filesystem::path(folder_ / "")});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, testing::HasSubstr("error D302"));
  // What --against names counts alone.
  EXPECT_EQ(RunCli({"check", Path("m.bas"), "--against", library_},
                   {.program = std::filesystem::path(folder_ / "")})
                .status,
            0);
}

TEST_F(CheckCommand, VisualBasic6RefusesWhatOfficeNeeds) {
  folder_.Put("m.bas", "Declare PtrSafe Sub S Lib \"user32\" (ByVal n As Long)\r\n");
  for (const std::string target : {"vb6", "vba7"}) {
    EXPECT_THAT(RunCli({"check", Path("m.bas"), "--target", target}).out,
                testing::HasSubstr("error D110"));
  }
  EXPECT_EQ(RunCli({"check", Path("m.bas"), "--target", "vba7-only"}).out, "");
}

}  // namespace
}  // namespace declarium::cli
