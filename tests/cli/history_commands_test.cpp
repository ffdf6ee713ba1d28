#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class HistoryCommandsTest : public CliTest {
 protected:
  CliRun Run(const std::vector<std::string>& arguments) {
    return RunCli(arguments, {.history = folder_ / "history"});
  }
};

TEST_F(HistoryCommandsTest, ListsWhatCommandsReplaced) {
  const auto first = Bytes("sample.api");
  ASSERT_EQ(Run({"rename", library_, "Another title"}).status, 0);
  const auto list = Run({"history", library_});
  EXPECT_EQ(list.status, 0);
  EXPECT_TRUE(list.out.starts_with("1\t20")) << list.out;
  EXPECT_TRUE(list.out.ends_with("Z\t" + std::to_string(first.size()) + "\treplaced\n"))
      << list.out;
  EXPECT_EQ(Run({"restore", library_, "1"}).status, 0);
  EXPECT_EQ(Bytes("sample.api"), first);
  EXPECT_TRUE(Run({"history", library_}).out.starts_with("2\t")) << "what was there is kept too";
}

TEST_F(HistoryCommandsTest, PrintsJson) {
  ASSERT_EQ(Run({"rename", library_, "Another title"}).status, 0);
  const auto out = Run({"--json", "history", library_}).out;
  EXPECT_TRUE(out.starts_with("{\"declarium\":1,\"command\":\"history\",\"path\":\"")) << out;
  EXPECT_NE(out.find("{\"version\":1,\"time\":\"20"), std::string::npos) << out;
  EXPECT_NE(out.find("\"reason\":\"replaced\"}"), std::string::npos) << out;
}

TEST_F(HistoryCommandsTest, RestoreWritesIntoAnotherFileToo) {
  const auto first = Bytes("sample.api");
  ASSERT_EQ(Run({"rename", library_, "Another title"}).status, 0);
  const auto second = Bytes("sample.api");
  EXPECT_EQ(Run({"restore", library_, "1", "-o", Path("old.api")}).status, 0);
  EXPECT_EQ(Bytes("old.api"), first);
  EXPECT_EQ(Bytes("sample.api"), second);
}

TEST_F(HistoryCommandsTest, RestoreReplacesNoLibraryAndNothingElseThatItDidNotWrite) {
  const auto first = Bytes("sample.api");
  ASSERT_EQ(Run({"rename", library_, "Another title"}).status, 0);
  folder_.Put("other.api", "Other\x02\x02");
  folder_.Put("module.bas", "Sub Main()\r\nEnd Sub\r\n");
  folder_.Put("export.bas", "Const A = 1");
  for (const std::string name : {"other.api", "module.bas"}) {
    const auto before = Bytes(name);
    const auto run = Run({"restore", library_, "1", "-o", Path(name)});
    EXPECT_EQ(run.status, 3);
    EXPECT_NE(run.err.find("--force replaces it"), std::string::npos) << run.err;
    EXPECT_EQ(Bytes(name), before);
    EXPECT_EQ(Run({"restore", library_, "1", "-o", Path(name), "--force"}).status, 0);
    EXPECT_EQ(Bytes(name), first);
  }
  EXPECT_EQ(Run({"restore", library_, "1", "-o", Path("export.bas")}).status, 0);
  EXPECT_EQ(Bytes("export.bas"), first);
}

TEST_F(HistoryCommandsTest, KeepsModulesAndExports) {
  folder_.Put("out.bas", "Const OLD = 1");
  ASSERT_EQ(Run({"export", library_, Path("out.bas")}).status, 0);
  EXPECT_EQ(Run({"restore", Path("out.bas"), "1"}).status, 0);
  EXPECT_EQ(Bytes("out.bas"), "Const OLD = 1");
}

TEST_F(HistoryCommandsTest, KeepsWhatCouldNotBeWritten) {
  const auto out = Path("missing/out.bas");
  const auto failed = Run({"export", library_, out});
  EXPECT_EQ(failed.status, 3);
  EXPECT_NE(failed.err.find("declarium-cli history"), std::string::npos) << failed.err;
  EXPECT_TRUE(Run({"history", out}).out.ends_with("\tunwritten\n"));
}

TEST_F(HistoryCommandsTest, KeepsNothingWithNoHistory) {
  ASSERT_EQ(Run({"--no-history", "rename", library_, "Another title"}).status, 0);
  const auto list = Run({"history", library_});
  EXPECT_EQ(list.status, 1);
  EXPECT_EQ(list.out, "");
}

TEST_F(HistoryCommandsTest, AnUnknownVersionIsNotFound) {
  const auto before = Bytes("sample.api");
  const auto restore = Run({"restore", library_, "7"});
  EXPECT_EQ(restore.status, 1);
  EXPECT_NE(restore.err.find("no version 7"), std::string::npos);
  EXPECT_EQ(Bytes("sample.api"), before);
}

}  // namespace
}  // namespace declarium::cli
