// What happens when files are not what they should be: one message that names the file, status 3,
// and nothing changed.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

class BadInput : public CliTest {
 protected:
  void ExpectFileFailure(const std::vector<std::string>& arguments, const std::string& file) {
    const auto before = Bytes("sample.api");
    const auto files = folder_.CountFiles();
    const auto run = RunCli(arguments);
    EXPECT_EQ(run.status, 3) << arguments[0];
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(file), std::string::npos) << run.err;
    EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
    EXPECT_EQ(Bytes("sample.api"), before);
    EXPECT_EQ(folder_.CountFiles(), files);
  }
};

std::vector<std::vector<std::string>> CommandsOn(const std::string& file) {
  return {{"list", file},
          {"show", file, "A"},
          {"shared", file, "A"},
          {"facts", file, "A"},
          {"find", file, "A", "--kind", "const"},
          {"complete", file, "A", "--kind", "const"},
          {"search", file, "--name", "A"},
          {"basket", file, "A"},
          {"insert", file, "never.txt", "A"},
          {"export", file, "never.bas"},
          {"rename", file, "T"},
          {"delete", file, "A"}};
}

TEST_F(BadInput, FilesThatAreNoLibraries) {
  std::mt19937 random(1);
  std::string noise(4096, '\0');
  std::ranges::generate(noise, [&] { return static_cast<char>(3 + random() % 253); });
  folder_.Put("bad.api", "");
  for (const std::string& bytes : {std::string(), noise, std::string("T\x02names")}) {
    folder_.Put("bad.api", bytes);
    for (const auto& arguments : CommandsOn(Path("bad.api"))) {
      ExpectFileFailure(arguments, "bad.api");
    }
    ExpectFileFailure({"import", Path("bad.api"), Path("sample.bas")}, "bad.api");
    EXPECT_EQ(Bytes("bad.api"), bytes);
  }
}

TEST_F(BadInput, MissingLibraries) {
  for (const auto& arguments : CommandsOn(Path("none.api"))) {
    ExpectFileFailure(arguments, "none.api");
  }
}

TEST_F(BadInput, FoldersGivenAsFiles) {
  std::filesystem::create_directory(folder_ / "folder.bas");
  const auto folder = Path("folder.bas");
  for (const auto& arguments : CommandsOn(folder)) ExpectFileFailure(arguments, "folder.bas");
  ExpectFileFailure({"import", library_, folder}, "folder.bas");
  ExpectFileFailure({"new", folder, "T", "--force"}, "folder.bas");
  ExpectFileFailure({"export", library_, folder}, "folder.bas");
  ExpectFileFailure({"basket", library_, "LIMIT", "-o", folder}, "folder.bas");
  ExpectFileFailure({"insert", library_, folder, "LIMIT"}, "folder.bas");
}

TEST_F(BadInput, FoldersThatDoNotExist) {
  ExpectFileFailure({"new", Path("no/such.api"), "T"}, "such.api");
  ExpectFileFailure({"export", library_, Path("no/such.bas")}, "such.bas");
  ExpectFileFailure({"import", Path("no/such.api"), Path("sample.bas"), "--create", "T"},
                    "such.api");
}

TEST_F(BadInput, ALibraryOfSeparatorsOnlyReadsAsEmptyNames) {
  folder_.Put("bare.api", "\x02\x02");
  EXPECT_EQ(RunCli({"list", Path("bare.api")}).status, 0);
  const std::string separators(10'000, '\x02');
  folder_.Put("many.api", separators);
  EXPECT_EQ(RunCli({"list", Path("many.api")}).out, "");
}

TEST_F(BadInput, SourcesOfNoiseEndInALibraryThatLoads) {
  std::mt19937 random(2);
  for (int round = 0; round < 50; ++round) {
    std::string noise;
    for (int i = 0; i < 300; ++i) {
      constexpr const char* kPieces[] = {"Const ", "Type ",    "Declare Sub ", "\r\n", "\n",
                                         " _\r\n", "End Type", "\x0E",         "\x1B", "'",
                                         "\"",     " As ",     "\xFF",         "="};
      noise += kPieces[random() % std::size(kPieces)];
    }
    folder_.Put("noise.bas", noise);
    ASSERT_EQ(RunCli({"import", library_, Path("noise.bas"), "--replace"}).status, 0);
    ASSERT_EQ(RunCli({"list", library_}).status, 0);
  }
}

}  // namespace
}  // namespace declarium::cli
