// Files that other programs, or other savers, have open.
#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <windows.h>

#include "library/file_io.h"
#include "library/file_saver.h"
#include "library/temporary_file.h"
#include "support/temporary_folder.h"
#include "win32/unique_handle.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using win32::UniqueFile;

// Opens a file as most programs do to read it: nobody may delete or replace it meanwhile.
UniqueFile OpenAsAReader(const fs::path& path) {
  return UniqueFile(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST(WriteWholeFile, LeavesATemporaryFileThatItsSaverHoldsAlone) {
  const TemporaryFolder folder;
  const auto begun = folder.Put(TemporaryFileFor("b.api", 1, HashOf("begun")), "begun");
  fs::last_write_time(begun, fs::file_time_type::clock::now() - std::chrono::hours(1));
  UniqueFile held(
      ::CreateFileW(begun.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(held);
  EXPECT_TRUE(WriteWholeFile(folder / "a.api", "new"));
  EXPECT_TRUE(fs::exists(begun));
  held.Reset();
  EXPECT_TRUE(WriteWholeFile(folder / "a.api", "newer"));
  EXPECT_FALSE(fs::exists(begun));
  EXPECT_EQ(ContentOf(folder / "b.api"), "begun");
}

// Whether a creation time that is set comes back: not under Wine 8.
bool KeepsCreationTimes(const fs::path& path) {
  const FILETIME wanted = {0, 0x01C00000};
  const UniqueFile file(
      ::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  WIN32_FILE_ATTRIBUTE_DATA told = {};
  return file && ::SetFileTime(file.Get(), &wanted, nullptr, nullptr) &&
         ::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &told) &&
         ::CompareFileTime(&told.ftCreationTime, &wanted) == 0;
}

// Whether a file has the attributes that it was created with: not under Wine 10.
bool KeepsAttributesOfNewFiles(const fs::path& path) {
  UniqueFile file(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_HIDDEN, nullptr));
  file.Reset();
  return (::GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
}

TEST(WriteWholeFile, KeepsAttributesAndCreationTime) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  ASSERT_TRUE(::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE));
  WIN32_FILE_ATTRIBUTE_DATA before = {};
  ASSERT_TRUE(::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &before));
  ASSERT_TRUE(WriteWholeFile(path, "new"));
  WIN32_FILE_ATTRIBUTE_DATA after = {};
  ASSERT_TRUE(::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &after));
  if (KeepsAttributesOfNewFiles(folder / "hidden")) {
    EXPECT_EQ(after.dwFileAttributes, before.dwFileAttributes);
  }
  if (KeepsCreationTimes(folder.Put("probe", ""))) {
    EXPECT_EQ(::CompareFileTime(&after.ftCreationTime, &before.ftCreationTime), 0);
  }
}

TEST(WriteWholeFile, WaitsForAReaderThatIsGoneInAMoment) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  UniqueFile reader = OpenAsAReader(path);
  ASSERT_TRUE(reader);
  std::thread leaves([&] {
    // Until the new content is there and only has to take the old one's place.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (folder.CountFiles() < 2 && std::chrono::steady_clock::now() < end) ::Sleep(1);
    ::Sleep(50);
    reader.Reset();
  });
  const auto written = WriteWholeFile(path, "new");
  leaves.join();
  EXPECT_TRUE(written) << written.error().Message();
  EXPECT_EQ(ContentOf(path), "new");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(WriteWholeFile, AFileThatStaysOpenIsAnErrorAndStays) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  UniqueFile reader = OpenAsAReader(path);
  ASSERT_TRUE(reader);
  const auto written = WriteWholeFile(path, "new");
  reader.Reset();
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().kind, ErrorKind::kCannotWrite);
  EXPECT_EQ(written.error().system_code, ERROR_SHARING_VIOLATION);
  EXPECT_EQ(ContentOf(path), "old");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

}  // namespace
}  // namespace declarium
