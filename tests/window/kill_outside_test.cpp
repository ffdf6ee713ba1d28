// The program is killed while it saves: at its own name the library is the old one or the new one,
// whole. DECLARIUM_KILLS in the environment says how many kills the test makes; 20 without it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>

#include "library/file_format.h"
#include "library/temporary_file.h"
#include "window/outside_fixture.h"

namespace declarium {
namespace {

using namespace window_driver;
using std::chrono::microseconds;

constexpr int kConstants = 20'000;
constexpr int kEnoughKills = 20;

int WantedKills() {
  const char* const text = std::getenv("DECLARIUM_KILLS");
  return text == nullptr ? kEnoughKills : std::atoi(text);
}

// Long enough that writing it takes some time.
std::string LongLibrary(std::u16string_view title) {
  Library library;
  library.SetTitle(title);
  KindLists constants;
  for (int i = 0; i < kConstants; ++i) {
    std::string number = std::to_string(i);
    number.insert(0, 6 - number.size(), '0');
    constants.names.Add(u"A_CONSTANT_OF_A_LONG_LIBRARY_" +
                        std::u16string(number.begin(), number.end()));
    constants.items.Add(
        u"Long\x0e"
        u"1");
  }
  library.SetItems(Kind::kConst, std::move(constants));
  return LibraryBytes(library);
}

class KillOutside : public OutsideTest {
 protected:
  // Whether a saver had begun and not ended, and cleans up after it.
  [[nodiscard]] bool RemoveWhatWasBegun() const {
    bool begun = false;
    for (const auto& file : std::filesystem::directory_iterator(FileAt("."))) {
      if (!ParseTemporaryFileName(file.path())) continue;
      begun = true;
      std::filesystem::remove(file.path());
    }
    std::filesystem::remove_all(FileAt("history"));
    return begun;
  }
};

TEST_F(KillOutside, ASaverLeavesTheOldOrTheNewLibraryAtItsName) {
  const std::string before = LongLibrary(u"Before");
  const std::string after = LongLibrary(u"After");
  std::mt19937 random(20261122);
  std::uniform_real_distribution<double> around(0.2, 1.8);
  double pause = 20'000;  // microseconds; follows what the last kills met
  int old_files = 0;
  int new_files = 0;
  int while_saving = 0;
  const int kills = WantedKills();
  for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
    Put("win.api", before);
    StartAndShow(L"win.api");
    ChooseMenu("mnuRename");
    AnswerText(u"After");
    ASSERT_TRUE(CaptionBecomes(u"After - Declarium 3.0"));
    ChooseMenu("mnuSave");
    std::this_thread::sleep_for(microseconds(static_cast<long>(pause * around(random))));
    Kill();
    const std::string left = BytesOf("win.api");
    EXPECT_TRUE(left == before || left == after)
        << "kill " << kill << " left " << left.size() << " bytes";
    ++(left == after ? new_files : old_files);
    while_saving += RemoveWhatWasBegun() ? 1 : 0;
    pause *= left == after ? 0.9 : 1.1;
  }
  std::printf("%d kills: %d left the old library, %d the new one; %d while it was being saved\n",
              kills, old_files, new_files, while_saving);
  EXPECT_GT(old_files, 0);
  EXPECT_GT(new_files, 0);
}

}  // namespace
}  // namespace declarium
