#include "library/file_stamp.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>

#include "library/file_saver.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

void MoveTime(const fs::path& path, std::chrono::seconds by) {
  fs::last_write_time(path, fs::last_write_time(path) + by);
}

TEST(HashOf, DiffersForEveryLengthAndEveryChangedByte) {
  std::set<std::uint64_t> hashes;
  std::string bytes;
  for (int size = 0; size < 200; ++size, bytes += 'x') {
    EXPECT_TRUE(hashes.insert(HashOf(bytes)).second) << size << " bytes";
    for (auto& byte : bytes) {
      byte ^= 1;
      EXPECT_TRUE(hashes.insert(HashOf(bytes)).second) << size << " bytes, one changed";
      byte ^= 1;
    }
  }
}

TEST(HashOf, SeesWordsThatChangePlaces) {
  const std::string a(32, 'a');
  const std::string b(32, 'b');
  EXPECT_NE(HashOf(a + b), HashOf(b + a));
  EXPECT_NE(HashOf(std::string("12345678abcdefgh")), HashOf(std::string("abcdefgh12345678")));
}

TEST(HashOf, IsTheSameOnEverySystem) {
  EXPECT_EQ(HashOf("A library of declarations, kept as one text."), 0x074D15FBCF75CCAEULL);
}

TEST(HasChangedSince, IsFalseForTheFileThatWasReadOrWritten) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "content");
  const auto read = ReadStamped(path);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->bytes, "content");
  EXPECT_FALSE(HasChangedSince(read->stamp, path));
  ASSERT_TRUE(WriteWholeFile(path, "longer content"));
  EXPECT_FALSE(HasChangedSince(StampOf(path, 14, HashOf("longer content")), path));
}

TEST(HasChangedSince, IsTrueForAnotherSizeAndForOtherBytesOfTheSameSize) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "content");
  const auto stamp = ReadStamped(path)->stamp;
  folder.Put("a.api", "content and more");
  EXPECT_TRUE(HasChangedSince(stamp, path));
  folder.Put("a.api", "CONTENT");
  MoveTime(path, std::chrono::seconds(5));
  EXPECT_TRUE(HasChangedSince(stamp, path));
}

TEST(HasChangedSince, IsFalseForAFileThatOnlyGotAnotherTime) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "content");
  const auto stamp = ReadStamped(path)->stamp;
  MoveTime(path, std::chrono::seconds(5));
  EXPECT_FALSE(HasChangedSince(stamp, path));
}

TEST(HasChangedSince, IsFalseForAMissingFile) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "content");
  const auto stamp = ReadStamped(path)->stamp;
  fs::remove(path);
  EXPECT_FALSE(HasChangedSince(stamp, path));
}

TEST(StampOf, DoesNotTakeTheTimeOfSomebodyElsesContent) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "somebody else's");
  const auto stamp = StampOf(path, 4, HashOf("ours"));
  EXPECT_EQ(stamp.written, 0);
  EXPECT_TRUE(HasChangedSince(stamp, path));
}

}  // namespace
}  // namespace declarium
