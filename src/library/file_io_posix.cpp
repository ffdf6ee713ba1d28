#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "library/file_io.h"
#include "library/temporary_file.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;

// Owns a file descriptor.
class Descriptor {
 public:
  explicit Descriptor(int fd) noexcept : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() { Close(); }

  [[nodiscard]] bool IsOpen() const noexcept { return fd_ >= 0; }
  [[nodiscard]] int Get() const noexcept { return fd_; }
  // Closes; false when the system reports a late write error.
  bool Close() noexcept { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

std::unexpected<Error> Failed(ErrorKind kind, const fs::path& path, int code) {
  return std::unexpected(Error{kind, PathText(path), std::strerror(code), code});
}

// Opens for reading. The system opens folders too, so they are refused here.
std::expected<Descriptor, Error> OpenForReading(const fs::path& path, struct stat& status) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0) {
    return Failed(ErrorKind::kCannotRead, path, errno);
  }
  if (S_ISDIR(status.st_mode)) return Failed(ErrorKind::kCannotRead, path, EISDIR);
  return file;
}

// Reads up to `size` bytes, going on after interruptions; -1 with errno on failure.
ssize_t ReadFully(int fd, char* out, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const auto count = ::read(fd, out + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<ssize_t>(done);
}

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

std::expected<void, Error> WriteInPlace(const fs::path& path, std::string_view bytes) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (!file.IsOpen() || !WriteFully(file.Get(), bytes) || !Flush(file.Get()) || !file.Close()) {
    return Failed(ErrorKind::kCannotWrite, path, errno);
  }
  return {};
}

// Makes the replacement itself durable; a folder that cannot be flushed loses nothing but that.
void FlushFolder(const fs::path& folder) {
  const Descriptor handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC));
  if (handle.IsOpen()) ::fsync(handle.Get());
}

// Whether a folder that refuses a new file may still let an existing file be written.
bool FolderRefusesNewFiles(int code) {
  return code == EACCES || code == EPERM || code == EROFS;
}

// The file that is to be replaced: a symbolic link stays, its target is replaced.
fs::path ReplacedFile(const fs::path& path) {
  std::error_code ignored;
  auto target = fs::canonical(path, ignored);
  return target.empty() ? path : target;
}

// Gives the new file the old one's permissions and, where the system allows it, its owner and
// group.
bool TakeOwnerAndMode(int fd, const struct stat& old) {
  [[maybe_unused]] const int ignored = ::fchown(fd, old.st_uid, old.st_gid);
  return ::fchmod(fd, old.st_mode & 07777) == 0;
}

std::expected<void, Error> Replace(const fs::path& path, const std::optional<struct stat>& old,
                                   std::string_view bytes) {
  const auto target = ReplacedFile(path);
  RemoveAbandonedFiles(target.parent_path());
  const auto temporary =
      TemporaryFileIn(target.parent_path(), static_cast<unsigned long>(::getpid()));
  Descriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (!file.IsOpen()) {
    if (FolderRefusesNewFiles(errno)) return WriteInPlace(path, bytes);
    return Failed(ErrorKind::kCannotWrite, path, errno);
  }
  // The lock marks the file as not abandoned for other savers; it lasts until both are closed.
  const Descriptor held(::dup(file.Get()));
  ::flock(file.Get(), LOCK_EX | LOCK_NB);
  bool done = !old || TakeOwnerAndMode(file.Get(), *old);
  done = done && WriteFully(file.Get(), bytes) && Flush(file.Get()) && file.Close() &&
         ::rename(temporary.c_str(), target.c_str()) == 0;
  if (!done) {
    const int code = errno;
    ::unlink(temporary.c_str());
    return Failed(ErrorKind::kCannotWrite, path, code);
  }
  FlushFolder(target.parent_path());
  return {};
}

}  // namespace

void RemoveUnlessHeld(const fs::path& temporary_file) {
  const Descriptor file(::open(temporary_file.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!file.IsOpen() || ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) return;
  ::unlink(temporary_file.c_str());
}

std::string PathText(const fs::path& path) {
  return path.native();
}

std::expected<std::string, Error> ReadWholeFile(const fs::path& path) {
  struct stat status = {};
  const auto file = OpenForReading(path, status);
  if (!file) return std::unexpected(file.error());

  std::string bytes;
  int code = 0;
  const auto read_more = [&](std::size_t more) {
    const auto start = bytes.size();
    bytes.resize_and_overwrite(start + more, [&](char* out, std::size_t) {
      const auto count = ReadFully(file->Get(), out + start, more);
      if (count < 0) code = errno;
      return start + static_cast<std::size_t>(count < 0 ? 0 : count);
    });
    return bytes.size() - start;
  };
  // The size is what an ordinary file has; a pipe has none, so it is read until it ends.
  constexpr std::size_t kPipeBlock = 64 * 1024;
  if (S_ISREG(status.st_mode)) {
    read_more(static_cast<std::size_t>(status.st_size));
  } else {
    while (read_more(kPipeBlock) > 0) {
    }
  }
  if (code != 0) return Failed(ErrorKind::kCannotRead, path, code);
  return bytes;
}

std::optional<FileView> MapFile(const fs::path& path) {
  struct stat status = {};
  const auto file = OpenForReading(path, status);
  if (!file || !S_ISREG(status.st_mode) || status.st_size == 0) return std::nullopt;
  const auto size = static_cast<std::size_t>(status.st_size);
  auto* const start = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file->Get(), 0);
  if (start == MAP_FAILED) return std::nullopt;
  return FileView{{static_cast<const char*>(start), size},
                  std::shared_ptr<void>(start, [size](void* mapped) { ::munmap(mapped, size); })};
}

std::optional<FileStatus> StatusOf(const fs::path& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  constexpr std::int64_t kNanoseconds = 1'000'000'000;
  return FileStatus{status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec,
                    static_cast<std::uint64_t>(status.st_size)};
}

std::expected<std::string, Error> ReadFileUntil(const fs::path& path, char end, std::size_t limit) {
  struct stat status = {};
  const auto file = OpenForReading(path, status);
  if (!file) return std::unexpected(file.error());

  constexpr std::size_t kBlock = 32;
  std::string bytes;
  while (bytes.size() < limit) {
    char block[kBlock];
    const auto count = ReadFully(file->Get(), block, std::min(kBlock, limit - bytes.size()));
    if (count < 0) return Failed(ErrorKind::kCannotRead, path, errno);
    if (count == 0) break;
    const std::string_view read(block, static_cast<std::size_t>(count));
    bytes += read.substr(0, read.find(end));
    if (read.contains(end)) return bytes;
  }
  return std::string();
}

std::expected<void, Error> WriteWholeFile(const fs::path& path, std::string_view bytes) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) {
    if (errno != ENOENT) return Failed(ErrorKind::kCannotWrite, path, errno);
    // A link to a file that does not exist yet: opening it creates the file.
    std::error_code ignored;
    if (fs::is_symlink(path, ignored)) return WriteInPlace(path, bytes);
    return Replace(path, std::nullopt, bytes);
  }
  if (S_ISDIR(status.st_mode)) return Failed(ErrorKind::kCannotWrite, path, EISDIR);
  // Replacing would get round a write protection that opening the file respects.
  if (::access(path.c_str(), W_OK) != 0) return Failed(ErrorKind::kCannotWrite, path, errno);
  if (!S_ISREG(status.st_mode)) return WriteInPlace(path, bytes);
  return Replace(path, status, bytes);
}

}  // namespace declarium
