#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/library_fixture.h"

#include "support/golden.h"

namespace declarium::cli {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kFiles[] = {"api.bas",    "Project1.vbp", "Main.bas",
                                  "Shared.bas", "Worker.cls",   "Face.frm"};

// A copy of the golden project and the library of api.bas.
class PlannedProjectTest : public testing::Test {
 protected:
  PlannedProjectTest() {
    for (const auto* const file : kFiles) fs::copy_file(Golden(file), folder_ / file);
    const auto run = RunCli({"import", Path("api.api"), Path("api.bas"), "--create", "Api"});
    EXPECT_EQ(run.status, 0) << run.err;
  }

  static fs::path Golden(const std::string& name) {
    return fs::path(DECLARIUM_SOURCE_DIR) / "tests" / "cli" / "golden" / "plan" / name;
  }
  [[nodiscard]] std::string Path(const std::string& name) const { return PathText(folder_ / name); }
  [[nodiscard]] std::string Bytes(const std::string& name) const {
    return ContentOf(folder_ / name);
  }

  // The output with file names without their folder.
  [[nodiscard]] std::string Plain(std::string text) const {
    const auto folder = Path("x").substr(0, Path("x").size() - 1);
    for (std::size_t at = 0; (at = text.find(folder)) != std::string::npos;)
      text.erase(at, folder.size());
    return text;
  }

  [[nodiscard]] CliRun Insert(const std::string& module, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"insert", Path("api.api"), Path(module)});
    arguments.insert(arguments.end(), {"--missing", "--project", Path("Project1.vbp")});
    return RunCli(arguments);
  }
  [[nodiscard]] CliRun Missing(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"missing", Path("Project1.vbp")});
    arguments.insert(arguments.end(), {"--library", Path("api.api")});
    return RunCli(arguments);
  }

  const std::vector<std::string> names_ = {"A_NEW", "SW_SHOW", "GWL_STYLE",
                                           "CLASH", "LIMIT",   "GetTickCount",
                                           "Sleep", "RECT",    "FindFirstFile"};
  TemporaryFolder folder_;
};

TEST_F(PlannedProjectTest, EveryRowOfThePlanIsToldForEveryKindOfModule) {
  for (const auto* const module : {"Main.bas", "Shared.bas", "Worker.cls", "Face.frm"}) {
    auto arguments = names_;
    arguments.emplace_back("--dry-run");
    const auto plan = Insert(module, arguments);
    arguments.back() = "--diff";
    const auto difference = Insert(module, arguments);
    EXPECT_EQ(plan.status, 0) << plan.err;
    ExpectGoldenFile(Golden(fs::path(module).stem().string() + ".golden"),
                     Plain(plan.out + difference.out));
    EXPECT_EQ(Bytes(module), ReadGolden(Golden(module)));
  }
}

TEST_F(PlannedProjectTest, WhatWasInsertedIsThereTheSecondTime) {
  for (const auto* const module : {"Main.bas", "Shared.bas", "Worker.cls", "Face.frm"}) {
    ASSERT_EQ(Insert(module, names_).status, 0);
    const auto once = Bytes(module);
    EXPECT_NE(once, ReadGolden(Golden(module)));
    const auto again = Insert(module, names_);
    EXPECT_EQ(again.out.find("insert\t"), std::string::npos) << again.out;
    EXPECT_EQ(Bytes(module), once);
  }
}

TEST_F(PlannedProjectTest, OthersGoUnderAnotherNameOrAreLeftOut) {
  const auto run = Insert("Main.bas", {"CLASH", "FIND_DATA", "--as", "clash=CLASH_TWO", "--without",
                                       "type:FILETIME", "--scope", "Public"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with("clash\tconst:CLASH\tMain:10\tmember of an Enum\tas CLASH_TWO\n"))
      << run.out;
  EXPECT_NE(run.out.find("leave\ttype:FILETIME\n"), std::string::npos) << run.out;
  EXPECT_NE(Bytes("Main.bas").find("Public Const CLASH_TWO = 3\r\n"), std::string::npos);
  EXPECT_EQ(Bytes("Main.bas").find("Type FILETIME"), std::string::npos);
  EXPECT_EQ(Insert("Main.bas", {"CLASH", "--as", "CLASH=Buffer"}).status, 2);
  EXPECT_EQ(Insert("Main.bas", {"CLASH", "--as", "CLASH=Sub"}).status, 2);
  EXPECT_EQ(Insert("Main.bas", {"CLASH", "--as", "CLASH"}).status, 2);
  EXPECT_EQ(Insert("Main.bas", {"CLASH", "--without", "Other"}).status, 1);
}

TEST_F(PlannedProjectTest, JsonTellsWhatHappensAndWhere) {
  auto run = Insert("Main.bas", {"SW_SHOW", "GWL_STYLE", "RECT", "--json", "--dry-run"});
  std::istringstream lines(run.out);
  std::vector<json> objects;
  for (std::string line; std::getline(lines, line);) objects.push_back(json::parse(line));
  ASSERT_EQ(objects.size(), 4u) << run.out;
  EXPECT_EQ(objects[0].at("module"), Path("Main.bas"));
  EXPECT_EQ(objects[1], json::parse(R"({"kind":"const","name":"SW_SHOW","does":"present",
      "where":"Main:5"})"));
  EXPECT_EQ(objects[2].at("does"), "differs");
  EXPECT_EQ(objects[2].at("there"), "Private Const GWL_STYLE = 16");
  EXPECT_EQ(objects[3].at("does"), "insert");
  EXPECT_FALSE(objects[3].contains("where"));
}

TEST_F(PlannedProjectTest, AModuleThatIsNotInTheProjectIsRefused) {
  std::ofstream(folder_ / "Else.bas") << "Sub S()\r\nEnd Sub\r\n";
  EXPECT_EQ(Insert("Else.bas", {"RECT"}).status, 2);
  EXPECT_EQ(Insert("Gone.bas", {"RECT"}).status, 3);
  EXPECT_EQ(RunCli({"insert", Path("api.api"), Path("Main.bas"), "RECT", "--diff"}).status, 2);
}

TEST_F(PlannedProjectTest, EncodingMarkAndLineEndsOfTheModuleStay) {
  const std::string mark = "\xEF\xBB\xBF";
  const std::string before = mark + "Option Explicit\n' \xC5\xA1\nSub S()\nEnd Sub";
  std::ofstream(folder_ / "utf.bas", std::ios::binary) << before;
  ASSERT_EQ(RunCli({"insert", Path("api.api"), Path("utf.bas"), "A_NEW", "--missing"}).status, 0);
  EXPECT_EQ(Bytes("utf.bas"),
            mark + "Option Explicit\n\nPrivate Const A_NEW = 1\n\n' \xC5\xA1\nSub S()\nEnd Sub");
  std::ofstream(folder_ / "end.bas", std::ios::binary) << "Const X = 1";
  ASSERT_EQ(RunCli({"insert", Path("api.api"), Path("end.bas"), "A_NEW", "--missing"}).status, 0);
  EXPECT_EQ(Bytes("end.bas"), "Const X = 1\r\nPrivate Const A_NEW = 1\r\n");
}

constexpr const char* kOpenHeader = "VERSION 5.00\r\nBegin VB.Form Face\r\n  Caption = \"x\"\r\n";

TEST_F(PlannedProjectTest, AModuleWhoseHeaderHasNoEndTakesNothing) {
  std::ofstream(folder_ / "Face.frm", std::ios::binary) << kOpenHeader;
  const auto told = Path("Face.frm") + ":4:1: expected End: the module's header does not end";
  for (const auto* const writing : {"--json", "--dry-run", "--diff"}) {
    const auto run = Insert("Face.frm", {"A_NEW", writing});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(told), std::string::npos) << run.err;
    EXPECT_EQ(Bytes("Face.frm"), kOpenHeader);
  }
  // The others of its project still do.
  EXPECT_EQ(Insert("Main.bas", {"A_NEW"}).status, 0);
  EXPECT_NE(Bytes("Main.bas").find("Private Const A_NEW = 1\r\n"), std::string::npos);
}

TEST_F(PlannedProjectTest, MissingTellsOfAModuleWhoseHeaderHasNoEndAndInsertsIntoTheOthers) {
  // Code behind the attributes is read, but where the header ends is not known.
  const auto open = kOpenHeader + std::string("Attribute VB_Name = \"Face\"\r\nSub S()\r\n") +
                    "  x = SW_SHOW\r\nEnd Sub\r\n";
  std::ofstream(folder_ / "Face.frm", std::ios::binary) << open;
  const auto before = Bytes("Worker.cls");
  const auto run = Missing({"--insert"});
  EXPECT_EQ(run.status, 3);
  EXPECT_NE(run.err.find(Path("Face.frm") + ":4:1: expected End"), std::string::npos) << run.err;
  EXPECT_EQ(Bytes("Face.frm"), open);
  EXPECT_NE(Bytes("Worker.cls"), before);
}

TEST_F(PlannedProjectTest, MissingTellsWhatAProjectLacks) {
  const auto run = Missing({});
  const auto difference = Missing({"--diff"});
  EXPECT_EQ(run.status, 0) << run.err;
  ExpectGoldenFile(Golden("missing.golden"), Plain(run.out + run.err + difference.out));
}

TEST_F(PlannedProjectTest, MissingInsertsOnceForTheWholeProjectWhatIsPublic) {
  ASSERT_EQ(Missing({"--insert", "--scope", "Public"}).status, 0);
  const auto again = Missing({});
  EXPECT_EQ(again.status, 1) << again.out;
  EXPECT_NE(Bytes("Main.bas").find("Public Type RECT"), std::string::npos);
  EXPECT_EQ(Bytes("Worker.cls").find("Type RECT"), std::string::npos);
}

TEST_F(PlannedProjectTest, MissingShowsWhatIsAmbiguousAndDoesNotInsertIt) {
  std::ofstream(folder_ / "other.bas")
      << "Const SW_SHOW = 5\r\nType RECT\r\nx As Long\r\nEnd Type\r\n";
  ASSERT_EQ(RunCli({"import", Path("other.api"), Path("other.bas"), "--create", "Other"}).status,
            0);
  const auto run = RunCli({"missing", Path("Worker.cls"), "--library", Path("api.api"), "--library",
                           Path("other.api"), "--insert", "--json"});
  EXPECT_NE(run.out.find(R"({"name":"RECT","candidates":[{"kind":"type","library":"api.api")"),
            std::string::npos)
      << run.out;
  EXPECT_EQ(Bytes("Worker.cls").find("Type RECT"), std::string::npos);
  EXPECT_NE(Bytes("Worker.cls").find("Private Const SW_SHOW = 5\r\n"), std::string::npos);
}

}  // namespace
}  // namespace declarium::cli
