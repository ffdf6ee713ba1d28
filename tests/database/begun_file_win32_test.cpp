// A begun file whose saver still runs stays, however old it is.
#include <chrono>
#include <gtest/gtest.h>
#include <windows.h>

#include "database/file_io.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

TEST(WriteWholeFile, KeepsABegunFileThatItsSaverHolds) {
  const TemporaryFolder folder;
  const auto begun = folder.Put(".declarium-1.2.tmp", "begun");
  fs::last_write_time(begun, fs::file_time_type::clock::now() - std::chrono::hours(1));
  const HANDLE held =
      ::CreateFileW(begun.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(WriteWholeFile(folder / "a.api", "new"));
  EXPECT_TRUE(fs::exists(begun));
  ::CloseHandle(held);
  EXPECT_TRUE(WriteWholeFile(folder / "a.api", "newer"));
  EXPECT_FALSE(fs::exists(begun));
}

}  // namespace
}  // namespace declarium
