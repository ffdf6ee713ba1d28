#include "library/history.h"

#include <fstream>
#include <gmock/gmock.h>

#include "library/saver_fixture.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class HistoryTest : public SaverTest {
 protected:
  // The file with another content than before, kept.
  void Change(History& history, std::string_view content) const {
    fs::remove(path_);
    Put("a.api", content);
    ASSERT_TRUE(history.KeepFile(path_, KeepBy::kLink));
  }

  fs::path path_ = Work("a.api");
  History history_{files_, folder_ / "history"};
};

TEST_F(HistoryTest, KeepsTheNewestFirstAndNumbersThem) {
  for (const char* content : {"one", "two22", "three33"}) Change(history_, content);
  EXPECT_THAT(Kept(path_), ElementsAre("replaced three33", "replaced two22", "replaced one"));
  EXPECT_EQ(history_.Versions(path_).front().number, 3);
  EXPECT_EQ(history_.Versions(path_).back().bytes, 3U);
  EXPECT_EQ(history_.Versions(path_).front().file.extension(), ".api");
}

TEST_F(HistoryTest, EqualContentsAreKeptOnceAndBecomeTheNewest) {
  for (const char* content : {"one", "two", "one"}) Change(history_, content);
  EXPECT_THAT(Kept(path_), ElementsAre("replaced one", "replaced two"));
  Change(history_, "one");
  EXPECT_THAT(Kept(path_), ElementsAre("replaced one", "replaced two"));
}

TEST_F(HistoryTest, LinksTheFileAndCopiesItWhereItCannot) {
  Put("a.api", "linked");
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  // Asked of a link of our own, Windows' C++ library may not count them.
  const auto own = fs::path(path_).concat(".own");
  const auto second = fs::path(path_).concat(".second");
  std::ofstream(own) << "own";
  fs::create_hard_link(own, second);
  if (fs::hard_link_count(own) == 2) {
    EXPECT_EQ(fs::hard_link_count(path_), 2U);
  }
  fs::remove(path_);
  Put("a.api", "copied there");
  files_.FailEvery("Link");
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  EXPECT_EQ(fs::hard_link_count(path_), 1U);
  EXPECT_THAT(Kept(path_), ElementsAre("replaced copied there", "replaced linked"));
}

TEST_F(HistoryTest, CopiesAFileThatIsGoingToBeWrittenInto) {
  Put("a.api", "old");
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kCopy));
  ASSERT_TRUE(SystemFiles().Overwrite(path_, "new"));
  EXPECT_EQ(Kept(path_).front(), "replaced old");
}

TEST_F(HistoryTest, AMissingFileHasNothingToKeep) {
  EXPECT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  EXPECT_THAT(Kept(path_), IsEmpty());
}

TEST_F(HistoryTest, WithoutAFolderItKeepsNothingAndFailsNever) {
  History none(files_, {});
  Put("a.api", "old");
  EXPECT_FALSE(none.IsOn());
  EXPECT_TRUE(none.KeepFile(path_, KeepBy::kLink));
  EXPECT_TRUE(none.KeepBytes(path_, "new"));
  EXPECT_THAT(none.Versions(path_), IsEmpty());
  EXPECT_FALSE(fs::exists(folder_ / "history"));
}

TEST_F(HistoryTest, FilesOfOneNameInTwoFoldersDoNotMix) {
  fs::create_directory(Work("below"));
  Put("a.api", "above");
  Put("below/a.api", "below");
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  ASSERT_TRUE(history_.KeepFile(Work("below/a.api"), KeepBy::kLink));
  EXPECT_THAT(Kept(path_), ElementsAre("replaced above"));
  EXPECT_THAT(Kept(Work("below/a.api")), ElementsAre("replaced below"));
  EXPECT_THAT(Kept(Work("below/../a.api")), ElementsAre("replaced above"));
}

TEST_F(HistoryTest, KeepsNoMoreVersionsOfAFileThanItsLimit) {
  History history(files_, folder_ / "history", {.versions = 3});
  for (const char* content : {"1", "22", "333", "4444", "55555"}) {
    Change(history, content);
    history.Prune(path_);
  }
  EXPECT_THAT(Kept(path_), ElementsAre("replaced 55555", "replaced 4444", "replaced 333"));
  EXPECT_EQ(history.Versions(path_).front().number, 5);
}

TEST_F(HistoryTest, KeepsNoMoreBytesThanItsLimitButTheNewestOfEachFile) {
  History history(files_, folder_ / "history", {.bytes = 250});
  for (int i = 0; i < 6; ++i) {
    Change(history, std::string(100, static_cast<char>('a' + i)));
    history.Prune(path_);
  }
  EXPECT_EQ(Kept(path_).size(), 2U);
  const auto other = Put("b.api", std::string(400, 'x'));
  ASSERT_TRUE(history.KeepFile(other, KeepBy::kLink));
  history.Prune(other);
  EXPECT_EQ(Kept(path_).size(), 1U);
  EXPECT_EQ(Kept(other).size(), 1U);
}

TEST_F(HistoryTest, NeverDropsWhatTheUserHasNotBeenToldOf) {
  History history(files_, folder_ / "history", {.versions = 2, .bytes = 10});
  ASSERT_TRUE(history.KeepBytes(path_, "not written"));
  for (const char* content : {"1", "22", "333"}) {
    Change(history, content);
    history.Prune(path_);
  }
  EXPECT_THAT(history.Untold(), ElementsAre(IdentityOf(path_)));
  EXPECT_EQ(Kept(path_).back(), "unwritten not written");
  history.MarkTold(path_);
  EXPECT_THAT(history.Untold(), IsEmpty());
  history.Prune(path_);
  EXPECT_THAT(Kept(path_), ElementsAre("replaced 333"));
}

TEST_F(HistoryTest, TellsWhenAContentWasWritten) {
  PutOld("a.api", "old", std::chrono::hours(48));
  ASSERT_TRUE(history_.KeepFile(path_, KeepBy::kLink));
  const auto version = history_.Versions(path_).front();
  EXPECT_LT(version.written, version.kept);
  EXPECT_EQ(LongTime("20261122T031500Z"), "2026-11-22T03:15:00Z");
}

TEST_F(HistoryTest, PassesOverFilesThatAreNoVersions) {
  Change(history_, "one");
  const auto folder = history_.Versions(path_).front().file.parent_path();
  for (const char* name : {"notes.txt", "000000-20261122T031500Z-20261122T031500Z-replaced",
                           "000009-20261122-20261122-replaced.api",
                           "000009-20261122T031500Z-20261122T031500Z-other.api"}) {
    folder_.Put(folder / name, "x");
  }
  EXPECT_THAT(Kept(path_), ElementsAre("replaced one"));
}

}  // namespace
}  // namespace declarium
