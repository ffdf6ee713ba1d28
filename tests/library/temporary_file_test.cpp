#include "library/temporary_file.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>

#include "library/file_io.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

// A file that was written so long ago.
fs::path PutOld(const TemporaryFolder& folder, const fs::path& name, seconds age) {
  const auto path = folder.Put(name, "temporary");
  fs::last_write_time(path, fs::file_time_type::clock::now() - age);
  return path;
}

TEST(TemporaryFileIn, GivesAnotherNameEveryTimeAndOneThatIsKnownAgain) {
  std::set<fs::path> names;
  for (int i = 0; i < 100; ++i) {
    const auto path = TemporaryFileIn("folder", 4711);
    EXPECT_EQ(path.parent_path(), "folder");
    EXPECT_TRUE(IsTemporaryFileName(path.filename().string())) << path;
    names.insert(path);
  }
  EXPECT_EQ(names.size(), 100U);
}

TEST(IsTemporaryFileName, IsTrueForNothingElse) {
  EXPECT_TRUE(IsTemporaryFileName(".declarium-1.2.tmp"));
  for (const char* name :
       {"", ".tmp", ".declarium-", ".declarium-.tmp", ".declarium-1.tmp", ".declarium-1..tmp",
        ".declarium-.1.tmp", ".declarium-1.2.tmp~", "x.declarium-1.2.tmp", "declarium-1.2.tmp",
        ".declarium-1.2", ".declarium-1.2.api", ".declarium-a.2.tmp", ".declarium-1.2.3.tmp",
        ".declarium-1.b.tmp", ".Declarium-1.2.tmp"}) {
    EXPECT_FALSE(IsTemporaryFileName(name)) << name;
  }
}

TEST(WriteWholeFile, RemovesWhatAKilledSaverLeftBesideTheFile) {
  const TemporaryFolder folder;
  const auto abandoned = PutOld(folder, ".declarium-1.2.tmp", seconds(65));
  const auto young = PutOld(folder, ".declarium-1.3.tmp", seconds(5));
  ASSERT_TRUE(WriteWholeFile(folder / "a.api", "new"));
  EXPECT_FALSE(fs::exists(abandoned));
  EXPECT_TRUE(fs::exists(young)) << "its saver may be at work";
  EXPECT_EQ(ContentOf(folder / "a.api"), "new");
}

TEST(WriteWholeFile, KeepsOldFilesOfOtherNamesAndInOtherFolders) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "below");
  fs::create_directory(folder / ".declarium-1.1.tmp");
  PutOld(folder, "a.tmp", seconds(1000));
  PutOld(folder, ".declarium-notes.tmp", seconds(1000));
  PutOld(folder, fs::path(u"\u010d.declarium-1.2.tmp"), seconds(1000));
  PutOld(folder, fs::path("below") / ".declarium-1.2.tmp", seconds(1000));
  const auto before = folder.CountFiles();
  ASSERT_TRUE(WriteWholeFile(folder / "a.api", "new"));
  EXPECT_EQ(folder.CountFiles(), before + 1);
  EXPECT_TRUE(fs::exists(folder / "below" / ".declarium-1.2.tmp"));
}

TEST(RemoveAbandonedFiles, PassesOverAFolderThatCannotBeListed) {
  const TemporaryFolder folder;
  RemoveAbandonedFiles(folder / "missing");
  EXPECT_EQ(folder.CountFiles(), 0U);
}

TEST(RemoveAbandonedFiles, TakesAnEmptyPathForTheCurrentFolder) {
  const TemporaryFolder folder;
  PutOld(folder, ".declarium-1.2.tmp", seconds(65));
  const auto before = fs::current_path();
  fs::current_path(folder.path());
  RemoveAbandonedFiles({});
  fs::current_path(before);
  EXPECT_EQ(folder.CountFiles(), 0U);
}

}  // namespace
}  // namespace declarium
