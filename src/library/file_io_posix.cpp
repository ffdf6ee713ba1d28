#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "library/descriptor_posix.h"
#include "library/file_io.h"

namespace declarium {
namespace {

namespace fs = std::filesystem;
using posix::Descriptor;
using posix::Failed;

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

}  // namespace

unsigned long ProcessNumber() {
  return static_cast<unsigned long>(::getpid());
}

std::string PathText(const fs::path& path) {
  return path.native();
}

// std::filesystem ends the process when memory runs out while it lists.
std::vector<fs::path> ListFolder(const fs::path& folder) {
  struct Closer {
    void operator()(DIR* listing) const { ::closedir(listing); }
  };
  std::vector<fs::path> paths;
  const std::unique_ptr<DIR, Closer> listing(::opendir(folder.empty() ? "." : folder.c_str()));
  while (const dirent* const entry = listing ? ::readdir(listing.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") paths.push_back(folder / name);
  }
  return paths;
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

fs::path IdentityOf(const fs::path& path) {
  std::error_code failed;
  auto identity = fs::weakly_canonical(fs::absolute(path, failed), failed);
  return failed ? path : identity;
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

}  // namespace declarium
