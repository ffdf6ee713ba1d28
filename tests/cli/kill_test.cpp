// A program that is killed while it writes: the file is the old one or the new one, whole, and what
// it held before is in the history when it is the new one.
//
// DECLARIUM_KILLS in the environment says how many kills each test makes; 40 without it.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "cli/library_fixture.h"

#include "library/history.h"

namespace declarium::cli {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr int kConstants = 60'000;

int WantedKills() {
  const char* const text = std::getenv("DECLARIUM_KILLS");
  return text == nullptr ? 40 : std::atoi(text);
}

std::string ManyConstants() {
  std::string source;
  for (int i = 0; i < kConstants; ++i) {
    source += "Const CONSTANT_OF_A_LONG_LIBRARY_" + std::to_string(i) +
              " As Long = " + std::to_string(i * 7) + "\r\n";
  }
  return source;
}

// A running `declarium-cli ARGUMENTS` that keeps its history in `history`.
class RunningCli {
 public:
  RunningCli(std::vector<std::string> arguments, const std::filesystem::path& history) {
    arguments.insert(arguments.begin(), DECLARIUM_CLI);
    std::vector<char*> words;
    for (auto& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    id_ = ::fork();
    if (id_ != 0) return;
    ::setenv("DECLARIUM_HISTORY", history.c_str(), 1);
    // A closed standard output would be a failed command.
    ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    ::execv(DECLARIUM_CLI, words.data());
    ::_exit(127);
  }

  void Kill() const { ::kill(id_, SIGKILL); }
  // Waits for the end and gives the system's status of it.
  [[nodiscard]] int Wait() const {
    int status = 0;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
  }

 private:
  pid_t id_ = -1;
};

struct Tally {
  int killed = 0;        // the rest had ended before
  int old_file = 0;      // of the killed: the file was still the old one
  int new_file = 0;      // of the killed: the file was the new one already
  int while_saving = 0;  // of the killed: the new file was begun and not yet in place
};

// One command that replaces a file, done again and again from the same beginning.
struct Job {
  const char* name;
  const char* target;  // the file that it replaces
  std::vector<std::string> arguments;
};

class KilledWhileWriting : public CliTest, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    folder_.Put("long.bas", ManyConstants());
    folder_.Put("more.bas", "Const ONE_MORE = 1\r\n");
    folder_.Put("out.bas", "Const BEFORE = 1\r\n");
    folder_.Put("module.bas", "Attribute VB_Name = \"M\"\r\nConst BEFORE = 1\r\n");
    ASSERT_EQ(RunCli({"import", library_, Path("long.bas")}).status, 0);
    job_ = Jobs()[static_cast<std::size_t>(GetParam())];
    contents_[0] = Bytes(job_.target);
    ASSERT_EQ(Start().Wait(), 0);
    contents_[1] = Bytes(job_.target);
    ASSERT_NE(contents_[0], contents_[1]);
    PutBack();
  }

  [[nodiscard]] std::vector<Job> Jobs() const {
    return {{"save", "sample.api", {"rename", library_, "Some time after"}},
            {"import", "sample.api", {"import", library_, Path("more.bas")}},
            {"export", "out.bas", {"export", library_, Path("out.bas")}},
            {"basket", "out.bas", {"basket", library_, "MAX_PATH", "-o", Path("out.bas")}},
            {"insert", "module.bas", {"insert", library_, Path("module.bas"), "MAX_PATH"}}};
  }

  [[nodiscard]] RunningCli Start() const { return {job_.arguments, History()}; }
  [[nodiscard]] std::filesystem::path History() const { return folder_ / "history"; }

  // The file as it was at first, and no version of it in the history. Made anew: the old one may be
  // a version.
  void PutBack() const {
    std::filesystem::remove(folder_ / job_.target);
    folder_.Put(job_.target, contents_[0]);
    std::filesystem::remove_all(History());
  }

  // How long the command takes that is left alone.
  microseconds Longest() const {
    Clock::duration longest{};
    for (int i = 0; i < 4; ++i) {
      PutBack();
      const auto start = Clock::now();
      EXPECT_EQ(Start().Wait(), 0);
      longest = std::max(longest, Clock::now() - start);
    }
    return std::chrono::duration_cast<microseconds>(longest);
  }

  // Starts the command and kills it after the delay.
  void KillOne(microseconds delay, Tally& tally) const {
    PutBack();
    const auto running = Start();
    std::this_thread::sleep_for(delay);
    running.Kill();
    const bool killed = WIFSIGNALED(running.Wait());
    const auto left = Bytes(job_.target);
    ASSERT_TRUE(left == contents_[0] || left == contents_[1])
        << left.size() << " bytes left by a kill after " << delay.count() << " microseconds";
    const bool is_new = left == contents_[1];
    ASSERT_TRUE(killed || is_new) << "a command that ended did not write";
    if (is_new) {
      ASSERT_TRUE(IsInHistory(contents_[0])) << "what was replaced is lost";
    }
    const int begun = RemoveTemporaryFiles();
    if (!killed) return;
    ++tally.killed;
    ++(is_new ? tally.new_file : tally.old_file);
    if (begun > 0) ++tally.while_saving;
  }

 private:
  [[nodiscard]] bool IsInHistory(const std::string& content) const {
    const declarium::History history(SystemFiles(), History());
    for (const auto& version : history.Versions(folder_ / job_.target)) {
      if (history.Read(version) == content) return true;
    }
    return false;
  }

  // What a killed program leaves is what the tests of FileSaver are about.
  int RemoveTemporaryFiles() const {
    int removed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      if (entry.path().extension() != ".tmp") continue;
      std::filesystem::remove(entry.path());
      ++removed;
    }
    return removed;
  }

  Job job_;
  std::array<std::string, 2> contents_;
};

TEST_P(KilledWhileWriting, LeavesTheOldOrTheNewFileWholeAndTheOldOneInTheHistory) {
  const int wanted = WantedKills();
  std::uniform_int_distribution<microseconds::rep> delay(0, Longest().count());
  std::mt19937_64 random{std::random_device{}()};
  Tally tally;
  for (int tries = 0; tally.killed < wanted && tries < 20 * wanted; ++tries) {
    KillOne(microseconds(delay(random)), tally);
    if (HasFatalFailure()) return;
  }
  EXPECT_EQ(tally.killed, wanted) << "the commands end before they can be killed";
  std::printf("%d kills, %d of them while the new file was written: %d old files, %d new\n",
              tally.killed, tally.while_saving, tally.old_file, tally.new_file);
}

INSTANTIATE_TEST_SUITE_P(EveryCommand, KilledWhileWriting, testing::Range(0, 5));

}  // namespace
}  // namespace declarium::cli
