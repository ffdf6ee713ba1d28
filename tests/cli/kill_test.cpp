// A program that is killed while it saves: the library's file is the old one or the new one, whole.
//
// DECLARIUM_KILLS in the environment says how many kills there are; 200 without it. Of 1 000 kills
// 227 came while the new file was written.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr int kConstants = 60'000;

int WantedKills() {
  const char* const text = std::getenv("DECLARIUM_KILLS");
  return text == nullptr ? 200 : std::atoi(text);
}

std::string ManyConstants() {
  std::string source;
  for (int i = 0; i < kConstants; ++i) {
    source += "Const CONSTANT_OF_A_LONG_LIBRARY_" + std::to_string(i) +
              " As Long = " + std::to_string(i * 7) + "\r\n";
  }
  return source;
}

// A running `declarium-cli rename FILE TITLE`.
class Saver {
 public:
  Saver(const std::string& file, const std::string& title) : id_(::fork()) {
    if (id_ != 0) return;
    ::execl(DECLARIUM_CLI, DECLARIUM_CLI, "rename", file.c_str(), title.c_str(), nullptr);
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
  pid_t id_;
};

struct Tally {
  int killed = 0;        // the rest had ended before
  int old_library = 0;   // of the killed: the file was still the old one
  int new_library = 0;   // of the killed: the file was the new one already
  int while_saving = 0;  // of the killed: the temporary file was there and not yet in place
};

class KilledWhileSaving : public CliTest {
 protected:
  // The same library under two titles of different length, so that everything behind the title
  // lies elsewhere.
  void SetUp() override {
    folder_.Put("long.bas", ManyConstants());
    ASSERT_EQ(RunCli({"import", library_, Path("long.bas")}).status, 0);
    for (const std::size_t i : {0u, 1u}) {
      ASSERT_EQ(RunCli({"rename", library_, kTitles[i]}).status, 0);
      contents_[i] = Bytes("sample.api");
    }
    ASSERT_NE(contents_[0], contents_[1]);
    ASSERT_GT(contents_[0].size(), 2'000'000u);
    files_ = folder_.CountFiles();
  }

  // How long a save takes that is left alone.
  microseconds LongestSave() {
    Clock::duration longest{};
    for (int i = 0; i < 6; ++i) {
      const auto start = Clock::now();
      EXPECT_EQ(Saver(library_, kTitles[i % 2]).Wait(), 0);
      longest = std::max(longest, Clock::now() - start);
    }
    return std::chrono::duration_cast<microseconds>(longest);
  }

  // Starts a save of the other title and kills it after the delay.
  void KillOneSave(microseconds delay, Tally& tally) {
    const std::size_t other = 1 - now_;
    const Saver saver(library_, kTitles[other]);
    std::this_thread::sleep_for(delay);
    saver.Kill();
    const bool killed = WIFSIGNALED(saver.Wait());
    const auto left = Bytes("sample.api");
    ASSERT_TRUE(left == contents_[0] || left == contents_[1])
        << left.size() << " bytes left by a save killed after " << delay.count() << " microseconds";
    const bool is_new = left == contents_[other];
    ASSERT_TRUE(killed || is_new) << "a save that ended did not save";
    if (is_new) now_ = other;
    const int temporary_files = AgeTemporaryFiles();
    if (!killed) return;
    ++tally.killed;
    ++(is_new ? tally.new_library : tally.old_library);
    if (temporary_files > 0) ++tally.while_saving;
  }

  // Whether a save that is left alone leaves nothing but the files that were there at first.
  [[nodiscard]] bool ASaveTidiesUp() {
    return Saver(library_, kTitles[1 - now_]).Wait() == 0 && folder_.CountFiles() == files_;
  }

  std::size_t now_ = 1;  // which of the contents the file has

 private:
  // A killed program cannot remove its temporary file; a later save does when the file
  // is old enough. Makes the young ones old and returns their number.
  int AgeTemporaryFiles() const {
    const auto now = std::filesystem::file_time_type::clock::now();
    int aged = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      if (entry.path().extension() != ".tmp") continue;
      if (entry.last_write_time() < now - std::chrono::minutes(30)) continue;
      std::filesystem::last_write_time(entry.path(), now - std::chrono::hours(1));
      ++aged;
    }
    return aged;
  }

  static constexpr std::array<const char*, 2> kTitles{"Before", "Some time after"};
  std::array<std::string, 2> contents_;
  std::size_t files_ = 0;
};

TEST_F(KilledWhileSaving, LeavesTheOldOrTheNewLibraryWhole) {
  const int wanted = WantedKills();
  std::uniform_int_distribution<microseconds::rep> delay(0, LongestSave().count());
  std::mt19937_64 random{std::random_device{}()};
  now_ = 1;
  Tally tally;
  for (int tries = 0; tally.killed < wanted && tries < 20 * wanted; ++tries) {
    KillOneSave(microseconds(delay(random)), tally);
    if (HasFatalFailure()) return;
  }
  EXPECT_EQ(tally.killed, wanted) << "the savers end before they can be killed";
  // Kills that come before or behind the writing prove nothing.
  EXPECT_GE(tally.while_saving, 1) << "no kill met the writing of the new file";
  EXPECT_TRUE(ASaveTidiesUp());
  std::printf("%d kills, %d of them while the new file was written: %d old libraries, %d new\n",
              tally.killed, tally.while_saving, tally.old_library, tally.new_library);
}

}  // namespace
}  // namespace declarium::cli
