// Every file call of a command that writes fails in turn, alone and with all that come after it:
// the file is the old one or the new one, the exit status tells which, and neither is lost.
#include <algorithm>
#include <string>
#include <vector>

#include "cli/library_fixture.h"

#include "support/faulty_files.h"
#include "support/kept_versions.h"

namespace declarium::cli {
namespace {

struct Job {
  const char* name;
  const char* target;
  std::vector<std::string> words;  // "@NAME" stands for the path of that file
};

const std::vector<Job>& Jobs() {
  static const std::vector<Job> jobs = {
      {"import", "sample.api", {"import", "@sample.api", "@more.bas"}},
      {"rename", "sample.api", {"rename", "@sample.api", "Another title"}},
      {"delete", "sample.api", {"delete", "@sample.api", "const:LIMIT"}},
      {"export", "out.bas", {"export", "@sample.api", "@out.bas"}},
      {"basket", "out.bas", {"basket", "@sample.api", "const:LIMIT", "-o", "@out.bas"}},
      {"insert", "module.bas", {"insert", "@sample.api", "@module.bas", "const:LIMIT"}},
      {"restore", "restored.api", {"restore", "@restored.api", "1"}},
  };
  return jobs;
}

class FileFaults : public testing::TestWithParam<std::size_t> {
 protected:
  // A folder as every run finds it.
  struct Place : CliTest {
    Place() {
      folder_.Put("more.bas", "Const MORE = 1\r\n");
      folder_.Put("out.bas", "Const OLD = 1");
      folder_.Put("module.bas", "Attribute VB_Name = \"M\"\r\nOption Explicit\r\n");
      folder_.Put("restored.api", "First\x02\x02");
      EXPECT_EQ(RunCli({"rename", Path("restored.api"), "Second"}, {.history = History()}).status,
                0);
    }
    void TestBody() override {}

    [[nodiscard]] std::filesystem::path History() const { return folder_ / "history"; }
    [[nodiscard]] CliRun Run(const Job& job, FileSystem& files) const {
      std::vector<std::string> words = job.words;
      for (auto& word : words) {
        if (word.starts_with('@')) word = Path(word.substr(1));
      }
      return RunCli(words, {.history = History(), .files = files});
    }
    [[nodiscard]] std::string Content(const Job& job) const { return Bytes(job.target); }
    [[nodiscard]] bool IsKept(const Job& job, const std::string& content) const {
      return declarium::IsKept(History(), Path(job.target), content);
    }
  };

  static void ExpectNothingLost(const Place& place, const Job& job, const CliRun& run,
                                const std::string& before, const std::string& after) {
    const auto content = place.Content(job);
    EXPECT_EQ(content, run.status == 0 ? after : before) << run.err;
    if (run.status == 0) {
      const bool told = run.err.find("could not be kept") != std::string::npos;
      EXPECT_TRUE(told || place.IsKept(job, before)) << run.err;
    } else {
      // A history that cannot be listed has no versions.
      EXPECT_EQ(run.status, run.err.find("no version") == std::string::npos ? 3 : 1) << run.err;
      EXPECT_NE(run.err.find(job.target), std::string::npos) << run.err;
      const bool says_kept = run.err.find("declarium-cli history") != std::string::npos;
      EXPECT_TRUE(!says_kept || place.IsKept(job, after)) << run.err;
    }
  }
};

TEST_P(FileFaults, LoseNothing) {
  const Job& job = Jobs()[GetParam()];
  const Place whole;
  const auto before = whole.Content(job);
  ASSERT_EQ(whole.Run(job, SystemFiles()).status, 0);
  const auto after = whole.Content(job);
  ASSERT_NE(after, before);
  for (const auto fault : {FaultyFiles::Fault::kOnce, FaultyFiles::Fault::kFromThenOn}) {
    bool reached = true;
    for (int call = 0; reached && !HasFailure(); ++call) {
      SCOPED_TRACE(std::string(job.name) + ", call " + std::to_string(call));
      const Place place;
      FaultyFiles files;
      files.FailAt(call, fault);
      const auto run = place.Run(job, files);
      reached = files.Calls() > call;
      ExpectNothingLost(place, job, run, before, after);
      if (run.status != 0) {
        EXPECT_EQ(place.Run(job, SystemFiles()).status, 0) << "the second try";
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Jobs, FileFaults, testing::Range<std::size_t>(0, 7),
                         [](const auto& job) { return std::string(Jobs()[job.param].name); });

}  // namespace
}  // namespace declarium::cli
