#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

#include "library/descriptor_posix.h"
#include "library/file_system.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using posix::Descriptor;
using posix::Failed;

bool WriteFully(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(fd, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

// A pipe or device refuses to be flushed to disk, which is no failure.
bool Flush(int fd) {
  return ::fsync(fd) == 0 || errno == EINVAL || errno == EROFS;
}

// Makes a replacement itself durable; a folder that cannot be flushed loses nothing but that.
void FlushFolder(const fs::path& folder) {
  const Descriptor handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC));
  if (handle.IsOpen()) ::fsync(handle.Get());
}

// Gives the file the model's permissions and, where the system allows it, its owner and group.
bool TakeOwnerAndMode(int fd, const fs::path& model) {
  struct stat status = {};
  if (model.empty() || ::stat(model.c_str(), &status) != 0) return true;
  [[maybe_unused]] const int ignored = ::fchown(fd, status.st_uid, status.st_gid);
  return ::fchmod(fd, status.st_mode & 07777) == 0;
}

// Where the file system cannot refuse an existing name, a second name can.
bool MoveToFreeName(const fs::path& from, const fs::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  return ::link(from.c_str(), to.c_str()) == 0 && ::unlink(from.c_str()) == 0;
}

class PosixFiles : public FileSystem {
 public:
  std::expected<std::string, Error> Read(const fs::path& path) override {
    return ReadWholeFile(path);
  }

  std::optional<FileStatus> Status(const fs::path& path) override { return StatusOf(path); }

  bool HaveSameContent(const fs::path& first, const fs::path& second) override {
    return declarium::HaveSameContent(first, second);
  }

  fs::path Target(const fs::path& path) override {
    std::error_code failed;
    if (auto target = fs::canonical(path, failed); !failed) return target;
    // A link to a file that does not exist yet: saving creates it.
    if (!fs::is_symlink(fs::symlink_status(path, failed))) return path;
    const auto target = fs::read_symlink(path, failed);
    return failed ? path : path.parent_path() / target;
  }

  std::expected<WriteTarget, Error> CheckTarget(const fs::path& path) override {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
      if (errno == ENOENT) return WriteTarget::kNew;
      return Failed(ErrorKind::kCannotWrite, path, errno);
    }
    if (S_ISDIR(status.st_mode)) return Failed(ErrorKind::kCannotWrite, path, EISDIR);
    if (::access(path.c_str(), W_OK) != 0) return Failed(ErrorKind::kCannotWrite, path, errno);
    return S_ISREG(status.st_mode) ? WriteTarget::kFile : WriteTarget::kInPlace;
  }

  std::vector<fs::path> List(const fs::path& folder) override { return ListFolder(folder); }

  bool IsHeld(const fs::path& temporary) override {
    const Descriptor file(::open(temporary.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    return file.IsOpen() && ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0;
  }

  FileHold Lock(const fs::path& path) override {
    auto file =
        std::make_shared<Descriptor>(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    constexpr auto kLongestWait = std::chrono::seconds(5);
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    while (file->IsOpen()) {
      if (::flock(file->Get(), LOCK_EX | LOCK_NB) == 0) return file;
      if (errno != EWOULDBLOCK && errno != EINTR) break;
      if (std::chrono::steady_clock::now() >= end) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return nullptr;
  }

  std::expected<FileHold, Error> Create(const fs::path& path, std::string_view bytes,
                                        const fs::path& model) override {
    auto file = std::make_shared<Descriptor>(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file->IsOpen()) return Failed(ErrorKind::kCannotWrite, path, errno);
    ::flock(file->Get(), LOCK_EX | LOCK_NB);
    if (TakeOwnerAndMode(file->Get(), model) && WriteFully(file->Get(), bytes) &&
        Flush(file->Get())) {
      return file;
    }
    const int code = errno;
    ::unlink(path.c_str());
    return Failed(ErrorKind::kCannotWrite, path, code);
  }

  std::expected<void, Error> Overwrite(const fs::path& path, std::string_view bytes) override {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return Result(
        file.IsOpen() && WriteFully(file.Get(), bytes) && Flush(file.Get()) && file.Close(), path);
  }

  std::expected<void, Error> Replace(const fs::path& from, const fs::path& to) override {
    const auto folder = to.parent_path();  // what has been replaced cannot fail any more
    auto result = Result(::rename(from.c_str(), to.c_str()) == 0, to);
    if (result) FlushFolder(folder);
    return result;
  }

  std::expected<void, Error> Move(const fs::path& from, const fs::path& to) override {
    return Result(MoveToFreeName(from, to), to);
  }

  std::expected<void, Error> Link(const fs::path& from, const fs::path& to) override {
    return Result(::link(from.c_str(), to.c_str()) == 0, to);
  }

  std::expected<void, Error> Remove(const fs::path& path) override {
    return Result(::unlink(path.c_str()) == 0, path);
  }

  std::expected<void, Error> MakeFolder(const fs::path& folder) override {
    std::error_code failed;
    if (fs::is_directory(folder, failed)) return {};
    if (folder.has_parent_path() && folder.parent_path() != folder) {
      if (auto above = MakeFolder(folder.parent_path()); !above) return above;
    }
    return Result(::mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST, folder);
  }

 private:
  static std::expected<void, Error> Result(bool done, const fs::path& path) {
    if (!done) return Failed(ErrorKind::kCannotWrite, path, errno);
    return {};
  }
};

}  // namespace

FileSystem& SystemFiles() {
  static PosixFiles files;
  return files;
}

bool RefusesNewFiles(const Error& error) {
  return error.system_code == EACCES || error.system_code == EPERM || error.system_code == EROFS;
}

}  // namespace declarium
