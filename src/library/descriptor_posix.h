// What the POSIX sources of file_io.h and file_system.h have in common.
#pragma once

#include <cstring>
#include <expected>
#include <filesystem>
#include <unistd.h>
#include <utility>

#include "library/file_io.h"
#include "text/error.h"

namespace declarium::posix {

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

// `code` is an errno.
[[nodiscard]] inline std::unexpected<Error> Failed(ErrorKind kind,
                                                   const std::filesystem::path& path, int code) {
  return std::unexpected(Error{kind, PathText(path), std::strerror(code), code});
}

}  // namespace declarium::posix
