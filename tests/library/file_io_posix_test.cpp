// What saving promises where permissions, links and devices are those of POSIX.
#include <atomic>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "library/file_io.h"
#include "library/file_saver.h"
#include "library/temporary_file.h"
#include "support/temporary_folder.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

// Runs `check` in a process of its own, which is no root there; whether it came back true.
template <class Check>
bool HoldsWithoutRoot(Check check) {
  const auto child = ::fork();
  if (child == 0) {
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) ::_exit(2);
    ::_exit(check() ? 0 : 1);
  }
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Gives the folder and its files to the user of HoldsWithoutRoot.
void GiveAway(const TemporaryFolder& folder) {
  if (::geteuid() != 0) return;
  ASSERT_EQ(::chown(folder.path().c_str(), kNobody, kNobody), 0);
  for (const auto& file : fs::directory_iterator(folder.path())) {
    ASSERT_EQ(::lchown(file.path().c_str(), kNobody, kNobody), 0);
  }
}

struct stat StatusOf(const fs::path& path) {
  struct stat status = {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status;
}

TEST(WriteWholeFile, KeepsThePermissions) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  for (const mode_t mode : {0600, 0664, 0644, 0755}) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    ASSERT_TRUE(WriteWholeFile(path, "new"));
    EXPECT_EQ(StatusOf(path).st_mode & 07777, mode);
  }
}

TEST(WriteWholeFile, KeepsTheOwner) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs root to give a file away";
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  ASSERT_EQ(::chown(path.c_str(), kNobody, kNobody), 0);
  ASSERT_TRUE(WriteWholeFile(path, "new"));
  EXPECT_EQ(StatusOf(path).st_uid, kNobody);
  EXPECT_EQ(StatusOf(path).st_gid, kNobody);
}

TEST(WriteWholeFile, LeavesATemporaryFileThatItsSaverHoldsAlone) {
  const TemporaryFolder folder;
  const auto begun = folder.Put(TemporaryFileFor("b.api", 1, HashOf("begun")), "begun");
  fs::last_write_time(begun, fs::file_time_type::clock::now() - std::chrono::hours(1));
  const int held = ::open(begun.c_str(), O_WRONLY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  ASSERT_TRUE(WriteWholeFile(folder / "a.api", "new"));
  EXPECT_TRUE(fs::exists(begun));
  ::close(held);
  ASSERT_TRUE(WriteWholeFile(folder / "a.api", "newer"));
  EXPECT_FALSE(fs::exists(begun));
  EXPECT_EQ(ContentOf(folder / "b.api"), "begun");
}

bool IsHeld(const fs::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY);
  const bool held = file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0;
  ::close(file);
  return held;
}

TEST(WriteWholeFile, HoldsTheFileThatItHasBegun) {
  const TemporaryFolder folder;
  std::atomic<bool> done = false;
  std::thread saver([&] {
    const std::string content(2'000'000, 'x');
    while (!done) EXPECT_TRUE(WriteWholeFile(folder / "a.api", content));
  });
  bool held = false;
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!held && std::chrono::steady_clock::now() < limit) {
    for (const auto& entry : fs::directory_iterator(folder.path())) {
      held = held || (entry.path().extension() == ".tmp" && IsHeld(entry.path()));
    }
  }
  done = true;
  saver.join();
  EXPECT_TRUE(held);
}

TEST(WriteWholeFile, ASymbolicLinkStaysAndItsTargetIsReplaced) {
  const TemporaryFolder folder;
  const auto target = folder.Put("target.api", "old");
  fs::create_symlink("target.api", folder / "link.api");
  ASSERT_TRUE(WriteWholeFile(folder / "link.api", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "link.api"));
  EXPECT_EQ(ContentOf(target), "new");
  EXPECT_EQ(folder.CountFiles(), 2U);
}

TEST(WriteWholeFile, ASymbolicLinkToNothingCreatesItsTarget) {
  const TemporaryFolder folder;
  fs::create_symlink("target.api", folder / "link.api");
  ASSERT_TRUE(WriteWholeFile(folder / "link.api", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "link.api"));
  EXPECT_EQ(ContentOf(folder / "target.api"), "new");
}

TEST(WriteWholeFile, InAFolderThatTakesNoNewFileItWritesInPlace) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old content");
  GiveAway(folder);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  const auto inode = StatusOf(path).st_ino;
  EXPECT_TRUE(HoldsWithoutRoot([&] { return WriteWholeFile(path, "new").has_value(); }));
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(ContentOf(path), "new");
  EXPECT_EQ(StatusOf(path).st_ino, inode);
}

TEST(WriteWholeFile, InAFolderThatTakesNoNewFileANewFileIsAnError) {
  const TemporaryFolder folder;
  GiveAway(folder);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  EXPECT_TRUE(HoldsWithoutRoot([&] {
    const auto written = WriteWholeFile(folder / "a.api", "new");
    return !written && written.error().kind == ErrorKind::kCannotWrite &&
           written.error().system_code == EACCES;
  }));
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  EXPECT_EQ(folder.CountFiles(), 0U);
}

TEST(WriteWholeFile, AReadOnlyFileIsRefused) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  GiveAway(folder);
  EXPECT_TRUE(HoldsWithoutRoot([&] {
    const auto written = WriteWholeFile(path, "new");
    return !written && written.error().system_code == EACCES;
  }));
  EXPECT_EQ(ContentOf(path), "old");
}

TEST(ReadWholeFile, AFileWithoutReadPermissionIsAnError) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  GiveAway(folder);
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  EXPECT_TRUE(HoldsWithoutRoot([&] {
    const auto read = ReadWholeFile(path);
    return !read && read.error().system_code == EACCES;
  }));
}

// Any file of the process may then grow to so many bytes; writing on fails, as on a full disk.
void LimitFileSize(rlim_t size) {
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit = {size, size};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(WriteWholeFile, AFailingWriteLeavesTheOldFileWhole) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old content");
  GiveAway(folder);
  EXPECT_TRUE(HoldsWithoutRoot([&] {
    LimitFileSize(4096);
    const auto written = WriteWholeFile(path, std::string(100'000, 'x'));
    return !written && written.error().kind == ErrorKind::kCannotWrite &&
           written.error().system_code == EFBIG;
  }));
  EXPECT_EQ(ContentOf(path), "old content");
  EXPECT_EQ(folder.CountFiles(), 1U) << "the temporary file is gone";
}

// A file system with room for a few pages.
class SmallDisk {
 public:
  explicit SmallDisk(const fs::path& path) : path_(path) {
    mounted_ = ::mount("none", path.c_str(), "tmpfs", 0, "size=64k") == 0;
  }
  ~SmallDisk() {
    if (mounted_) ::umount2(path_.c_str(), MNT_DETACH);
  }
  [[nodiscard]] bool IsMounted() const { return mounted_; }

 private:
  fs::path path_;
  bool mounted_;
};

TEST(WriteWholeFile, AFullDiskLeavesTheOldFileWhole) {
  const TemporaryFolder folder;
  const SmallDisk disk(folder.path());
  if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount a small file system";
  const auto path = folder.Put("a.api", "old content");
  const auto written = WriteWholeFile(path, std::string(200'000, 'x'));
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().system_code, ENOSPC);
  EXPECT_EQ(ContentOf(path), "old content");
  EXPECT_EQ(folder.CountFiles(), 1U);
}

TEST(WriteWholeFile, ADeviceIsWrittenInPlace) {
  EXPECT_TRUE(WriteWholeFile("/dev/null", "text"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  const auto written = WriteWholeFile("/dev/full", "text");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().system_code, ENOSPC);
}

TEST(WriteWholeFile, AFileAmongThePartsOfThePathIsAnError) {
  const TemporaryFolder folder;
  const auto written = WriteWholeFile(folder.Put("a.api", "old") / "b.api", "text");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error().system_code, ENOTDIR);
}

TEST(ReadWholeFile, APipeIsReadUntilItEnds) {
  const TemporaryFolder folder;
  const auto path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const std::string text(200'000, 'p');
  std::thread writer([&] {
    const int fd = ::open(path.c_str(), O_WRONLY);
    for (std::size_t done = 0; done < text.size();) {
      const auto count = ::write(fd, text.data() + done, text.size() - done);
      if (count <= 0) break;
      done += static_cast<std::size_t>(count);
    }
    ::close(fd);
  });
  EXPECT_EQ(ReadWholeFile(path), text);
  writer.join();
}

TEST(ReadWholeFile, AReadErrorIsReported) {
  // The memory of the own process opens, but nothing is mapped at its beginning.
  const auto read = ReadFileUntil("/proc/self/mem", '\2', 100);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().system_code, EIO);
}

TEST(WriteWholeFile, ProcessesSavingAtOnceLeaveOneOfTheContentsWhole) {
  const TemporaryFolder folder;
  const auto path = folder.Put("a.api", "old");
  const std::string contents[] = {std::string(300'000, 'a'), std::string(200'000, 'b')};
  std::vector<pid_t> children;
  for (const auto& content : contents) {
    const auto child = ::fork();
    if (child == 0) {
      bool all = true;
      for (int i = 0; i < 10; ++i) all = WriteWholeFile(path, content).has_value() && all;
      ::_exit(all ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const auto child : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "every save succeeds";
  }
  const auto left = ContentOf(path);
  EXPECT_TRUE(left == contents[0] || left == contents[1]) << left.size();
  EXPECT_EQ(folder.CountFiles(), 1U);
}

}  // namespace
}  // namespace declarium
