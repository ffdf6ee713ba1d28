#include "library/file_saver.h"

#include <algorithm>
#include <gmock/gmock.h>

#include "library/saver_fixture.h"
#include "library/temporary_file.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class FileSaverTest : public SaverTest {
 protected:
  // What a saver of "new" for a.api leaves that is killed when it has written so much of it.
  fs::path LeaveTemporary(std::string_view written, seconds age = seconds(65)) const {
    const auto name = TemporaryFileFor("a.api", 4711, HashOf("new"));
    return PutOld(name, written, age);
  }

  fs::path path_ = Work("a.api");
};

TEST_F(FileSaverTest, KeepsWhatItReplaces) {
  Put("a.api", "old");
  const auto saved = Saver().Save(path_, "new");
  ASSERT_TRUE(saved);
  EXPECT_FALSE(saved->not_kept);
  EXPECT_FALSE(HasChangedSince(saved->stamp, path_));
  EXPECT_EQ(ContentOf(path_), "new");
  EXPECT_THAT(Kept(path_), ElementsAre("replaced old"));
  EXPECT_EQ(FilesInWork(), 1U);
}

TEST_F(FileSaverTest, ANewFileLeavesNothingInTheHistory) {
  ASSERT_TRUE(Saver().Save(path_, "new"));
  EXPECT_THAT(Kept(path_), IsEmpty());
}

TEST_F(FileSaverTest, KeepsWhatCouldNotBePutInPlace) {
  Put("a.api", "old");
  files_.FailEvery("Replace");
  auto saver = Saver();
  const auto saved = saver.Save(path_, "new");
  ASSERT_FALSE(saved);
  EXPECT_TRUE(saved.error().kept);
  EXPECT_EQ(ContentOf(path_), "old");
  EXPECT_THAT(Kept(path_), Contains("unwritten new"));
  EXPECT_THAT(saver.Kept().Untold(), ElementsAre(IdentityOf(path_)));
}

TEST_F(FileSaverTest, KeepsWhatCouldNotBeWrittenAtAll) {
  const auto path = Work("missing") / "a.api";
  const auto saved = Saver().Save(path, "new");
  ASSERT_FALSE(saved);
  EXPECT_TRUE(saved.error().kept);
  EXPECT_THAT(Kept(path), ElementsAre("unwritten new"));
}

TEST_F(FileSaverTest, ADeadHistoryDoesNotKeepAFileFromBeingSaved) {
  Put("a.api", "old");
  folder_.Put("history", "a file where the folder should be");
  const auto saved = Saver().Save(path_, "new");
  ASSERT_TRUE(saved);
  EXPECT_TRUE(saved->not_kept);
  EXPECT_EQ(ContentOf(path_), "new");
}

TEST_F(FileSaverTest, PutsAWholeTemporaryFileBackUnderTheNameThatIsMissing) {
  const auto temporary = LeaveTemporary("new");
  const auto recovered = Saver().LookInto(folder_ / "work");
  ASSERT_EQ(recovered.size(), 1U);
  EXPECT_EQ(recovered[0].path, path_);
  EXPECT_TRUE(recovered[0].in_place);
  EXPECT_EQ(ContentOf(path_), "new");
  EXPECT_FALSE(fs::exists(temporary));
}

TEST_F(FileSaverTest, PutsItBackWithoutAHistoryToo) {
  LeaveTemporary("new");
  EXPECT_EQ(SaverWithoutHistory().LookInto(folder_ / "work").size(), 1U);
  EXPECT_EQ(ContentOf(path_), "new");
}

TEST_F(FileSaverTest, TheNextSaveIntoTheFolderPutsItBackToo) {
  LeaveTemporary("new");
  auto saver = Saver();
  ASSERT_TRUE(saver.Save(Work("b.api"), "other"));
  EXPECT_EQ(ContentOf(path_), "new");
  EXPECT_EQ(saver.TakeRecovered().size(), 1U);
}

TEST_F(FileSaverTest, KeepsTheBeginningOfAFileWhoseNameIsMissing) {
  LeaveTemporary("ne");
  const auto recovered = Saver().LookInto(folder_ / "work");
  ASSERT_EQ(recovered.size(), 1U);
  EXPECT_FALSE(recovered[0].in_place);
  EXPECT_FALSE(fs::exists(path_));
  EXPECT_THAT(Kept(path_), ElementsAre("unfinished ne"));
}

TEST_F(FileSaverTest, KeepsAWholeTemporaryFileWhoseNameIsTaken) {
  Put("a.api", "old");
  LeaveTemporary("new");
  EXPECT_EQ(Saver().LookInto(folder_ / "work").size(), 1U);
  EXPECT_EQ(ContentOf(path_), "old");
  EXPECT_THAT(Kept(path_), ElementsAre("unfinished new"));
  EXPECT_EQ(FilesInWork(), 1U);
}

TEST_F(FileSaverTest, RemovesTheBeginningOfAFileWhoseOldContentIsThere) {
  Put("a.api", "old");
  LeaveTemporary("ne");
  EXPECT_THAT(Saver().LookInto(folder_ / "work"), IsEmpty());
  EXPECT_THAT(Kept(path_), IsEmpty());
  EXPECT_EQ(FilesInWork(), 1U);
}

TEST_F(FileSaverTest, MovesWhatVersion3LeftToTheHistoryUnderItsOwnName) {
  Put("a.api", "old");
  const auto temporary = PutOld(".declarium-1.2.tmp", "whose?");
  const auto recovered = Saver().LookInto(folder_ / "work");
  ASSERT_EQ(recovered.size(), 1U);
  EXPECT_EQ(recovered[0].path, temporary);
  EXPECT_THAT(Kept(temporary), ElementsAre("unfinished whose?"));
  EXPECT_FALSE(fs::exists(temporary));
}

TEST_F(FileSaverTest, LeavesWhatVersion3LeftAloneWithoutAHistory) {
  const auto temporary = PutOld(".declarium-1.2.tmp", "whose?");
  EXPECT_THAT(SaverWithoutHistory().LookInto(folder_ / "work"), IsEmpty());
  EXPECT_EQ(ContentOf(temporary), "whose?");
}

TEST_F(FileSaverTest, LeavesAYoungTemporaryFileToItsSaver) {
  const auto temporary = LeaveTemporary("new", seconds(1));
  EXPECT_THAT(Saver().LookInto(folder_ / "work"), IsEmpty());
  EXPECT_TRUE(fs::exists(temporary));
}

TEST_F(FileSaverTest, LeavesOldFilesOfOtherNamesAndInOtherFoldersAlone) {
  fs::create_directory(Work("below"));
  fs::create_directory(Work(".declarium-1.1.tmp"));
  PutOld("a.tmp", "x");
  PutOld(".declarium-notes.tmp", "x");
  PutOld(fs::path("below") / ".declarium-1.2.tmp", "x");
  const auto before = FilesInWork();
  ASSERT_TRUE(Saver().Save(path_, "new"));
  EXPECT_EQ(FilesInWork(), before + 1);
  EXPECT_TRUE(fs::exists(Work("below") / ".declarium-1.2.tmp"));
}

TEST_F(FileSaverTest, PassesOverAFolderThatCannotBeListed) {
  EXPECT_THAT(Saver().LookInto(Work("missing")), IsEmpty());
}

TEST_F(FileSaverTest, TakesAnEmptyPathForTheCurrentFolder) {
  LeaveTemporary("new");
  const auto before = fs::current_path();
  fs::current_path(folder_ / "work");
  const auto recovered = Saver().LookInto({});
  fs::current_path(before);
  EXPECT_EQ(recovered.size(), 1U);
  EXPECT_EQ(ContentOf(path_), "new");
}

// One save of "new" over "old", with faults, then a look at what is left: the file is whole, and
// neither content is lost unless the saver said so.
void ExpectNothingLost(const std::expected<Saved, NotSaved>& saved, const fs::path& path,
                       const std::vector<std::string>& kept, int call) {
  const auto content = ContentOf(path);
  if (saved) {
    EXPECT_EQ(content, "new") << call;
    EXPECT_TRUE(saved->not_kept || std::ranges::count(kept, "replaced old") == 1) << call;
  } else {
    EXPECT_EQ(content, "old") << call;
    EXPECT_TRUE(!saved.error().kept || std::ranges::count(kept, "unwritten new") == 1) << call;
  }
}

TEST_F(FileSaverTest, LosesNothingWhicheverCallFails) {
  int failed_saves = 0;
  for (int call = 0;; ++call) {
    fs::remove_all(folder_ / "history");
    for (const auto& left : fs::directory_iterator(folder_ / "work")) fs::remove(left);
    Put("a.api", "old");
    files_.FailAt(call, FaultyFiles::Fault::kOnce);
    const auto saved = Saver().Save(path_, "new");
    const bool reached = files_.Calls() > call;
    files_.FailNever();
    ExpectNothingLost(saved, path_, Kept(path_), call);
    // One call that fails leaves a second way for everything but the history's own first folder.
    if (!saved) {
      ++failed_saves;
      EXPECT_TRUE(saved.error().kept) << call;
    }
    if (!reached) break;
    ASSERT_LT(call, 200);
  }
  EXPECT_GE(failed_saves, 3);
}

TEST_F(FileSaverTest, LosesNothingWhenEveryCallFailsFromOneOn) {
  for (int call = 0;; ++call) {
    fs::remove_all(folder_ / "history");
    for (const auto& left : fs::directory_iterator(folder_ / "work")) fs::remove(left);
    Put("a.api", "old");
    files_.FailAt(call, FaultyFiles::Fault::kFromThenOn);
    const auto saved = Saver().Save(path_, "new");
    const bool reached = files_.Calls() > call;
    files_.FailNever();
    ExpectNothingLost(saved, path_, Kept(path_), call);
    if (!reached) break;
    ASSERT_LT(call, 200);
  }
}

}  // namespace
}  // namespace declarium
