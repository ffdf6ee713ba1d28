#include <gtest/gtest.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class FindCommands : public CliTest {};

TEST_F(FindCommands, FindTakesPatternsInAnyCase) {
  EXPECT_EQ(RunCli({"find", library_, "m?x", "--kind", "const"}).out, "const:MAX_PATH\n");
  EXPECT_EQ(RunCli({"find", library_, "[hl]*t", "--kind", "const"}).out,
            "const:HEX_TEN\nconst:LIMIT\n");
}

TEST_F(FindCommands, FindInJson) {
  EXPECT_EQ(
      RunCli({"find", library_, "reset", "--kind", "declare", "--json"}).out,
      "{\"declarium\":1,\"command\":\"find\"}\n{\"kind\":\"declare\",\"name\":\"ResetAll\"}\n");
}

TEST_F(FindCommands, FindWithoutAHitSaysNothingWasFound) {
  const auto run = RunCli({"find", library_, "zzz", "--kind", "type"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(RunCli({"find", library_, "[", "--kind", "type"}).status, 1);
}

TEST_F(FindCommands, FindNeedsAPatternAndAKind) {
  EXPECT_EQ(RunCli({"find", library_, "", "--kind", "type"}).status, 2);
  EXPECT_EQ(RunCli({"find", library_, "a"}).status, 2);
  EXPECT_EQ(RunCli({"find", library_, "a", "--kind", "enum"}).status, 2);
}

TEST_F(FindCommands, CompleteTellsTheRow) {
  const auto run = RunCli({"complete", library_, "MAX", "--kind", "const"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "2\tconst:MAX_PATH\n");
}

TEST_F(FindCommands, CompleteInJson) {
  EXPECT_EQ(RunCli({"--json", "complete", library_, "re", "--kind", "declare"}).out,
            "{\"declarium\":1,\"command\":\"complete\",\"row\":1,\"name\":\"ResetAll\"}\n");
  const auto none = RunCli({"--json", "complete", library_, "zz", "--kind", "declare"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.out, "{\"declarium\":1,\"command\":\"complete\",\"row\":-1,\"name\":\"\"}\n");
}

TEST_F(FindCommands, CompletingAnEmptyTextSelectsNothing) {
  const auto run = RunCli({"complete", library_, "", "--kind", "const"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
}

struct SearchCase {
  std::vector<std::string> criteria;
  std::string found;
};

TEST_F(FindCommands, SearchMeetsItsCriteria) {
  const SearchCase cases[] = {
      {{"--name", "rect"}, "const:RECT\ntype:RECT\n"},
      {{"--name", "get", "--name-whole"}, ""},
      {{"--name", "getouter", "--name-whole"}, "declare:GetOuter\n"},
      {{"--type", "outer"}, "declare:GetOuter\n"},
      {{"--type", "out", "--type-whole"}, ""},
      {{"--const", "max_path", "--const-whole"}, "const:LIMIT\ntype:RECT\n"},
      {{"--value", "16"}, ""},
      {{"--value", "16", "--value-number", "--value-whole"}, "const:HEX_TEN\n"},
      {{"--arg", "hwnd"}, "declare:GetOuter\n"},
      {{"--arg", "left", "--arg-whole"}, "type:RECT\n"},
      {{"--text", "longest"}, "const:LIMIT\n"},
      {{"--text", "user32"}, "declare:GetOuter\ndeclare:ResetAll\n"},
      {{"--text", "long", "--text-whole", "--kinds", "type"}, "type:RECT\n"},
      {{"--name", "l", "--value", "7", "--kinds", "const"}, ""},
      {{"--name", "rect", "--kinds", "type,declare"}, "type:RECT\n"},
  };
  for (const auto& [criteria, found] : cases) {
    std::vector<std::string> arguments = {"search", library_};
    arguments.insert(arguments.end(), criteria.begin(), criteria.end());
    const auto run = RunCli(arguments);
    EXPECT_EQ(run.out, found) << criteria[0] << ' ' << criteria[1];
    EXPECT_EQ(run.status, found.empty() ? 1 : 0) << criteria[0] << ' ' << criteria[1];
    EXPECT_EQ(run.err, "");
  }
}

TEST_F(FindCommands, SearchTellsItsOutcomeInJson) {
  EXPECT_EQ(RunCli({"--json", "search", library_, "--name", "limit"}).out,
            "{\"declarium\":1,\"command\":\"search\",\"outcome\":\"done\"}\n"
            "{\"kind\":\"const\",\"name\":\"LIMIT\"}\n");
  const auto none = RunCli({"--json", "search", library_});
  EXPECT_EQ(none.status, 2);
  EXPECT_EQ(none.out, "{\"declarium\":1,\"command\":\"search\",\"outcome\":\"no_criteria\"}\n");
}

TEST_F(FindCommands, SearchAmongSingleItemsIsNotEnough) {
  ASSERT_EQ(RunCli({"import", library_, "-", "--replace"}, {.input = "Const A = 1\n"}).status, 0);
  const auto run = RunCli({"--json", "search", library_, "--name", "a"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "{\"declarium\":1,\"command\":\"search\",\"outcome\":\"not_enough\"}\n");
}

TEST_F(FindCommands, SearchRefusesUnknownKinds) {
  const auto run = RunCli({"search", library_, "--name", "a", "--kinds", "const,enum"});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("enum"), std::string::npos);
}

}  // namespace
}  // namespace declarium::cli
