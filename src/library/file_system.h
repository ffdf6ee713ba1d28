// The calls of the operating system that saving is made of, a method each, so that a test can let
// any of them fail. SystemFiles() is the real one, of which each operating system has its own
// source. An error names the file and keeps the system's number; nothing has changed then, unless a
// method says so.
#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "library/file_io.h"
#include "text/error.h"

namespace declarium {

// Tells other savers that a temporary file is in use, for as long as it lives. May be nullptr,
// where an open file cannot be put in place.
using FileHold = std::shared_ptr<const void>;

// How a path can be written.
enum class WriteTarget {
  kNew,      // there is no such file
  kFile,     // an ordinary file, which can be replaced
  kInPlace,  // a device or a pipe
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  [[nodiscard]] virtual std::expected<std::string, Error> Read(
      const std::filesystem::path& path) = 0;
  // The status of an ordinary file; nullopt when there is none of this name.
  [[nodiscard]] virtual std::optional<FileStatus> Status(const std::filesystem::path& path) = 0;
  // As the function of this name in file_io.h.
  [[nodiscard]] virtual bool HaveSameContent(const std::filesystem::path& first,
                                             const std::filesystem::path& second) = 0;
  // The file that `path` means: a symbolic link's target, also one that does not exist yet.
  [[nodiscard]] virtual std::filesystem::path Target(const std::filesystem::path& path) = 0;
  // How `path` can be written. A folder and a write-protected file are errors: replacing would get
  // round a protection that opening the file respects.
  [[nodiscard]] virtual std::expected<WriteTarget, Error> CheckTarget(
      const std::filesystem::path& path) = 0;
  // The paths in a folder (empty: the current one); none when it cannot be listed.
  [[nodiscard]] virtual std::vector<std::filesystem::path> List(
      const std::filesystem::path& folder) = 0;
  // Whether a saver at work holds the temporary file.
  [[nodiscard]] virtual bool IsHeld(const std::filesystem::path& temporary) = 0;

  // Makes the file if it is missing and holds it against other processes that want to, which are
  // waited for, for five seconds at most. nullptr when it could not be held.
  [[nodiscard]] virtual FileHold Lock(const std::filesystem::path& path) = 0;

  // Makes a new file with `bytes`, flushed to the disk. It takes the permissions, the owner and, on
  // Windows, the attributes and the creation time of `model`, unless that is empty.
  [[nodiscard]] virtual std::expected<FileHold, Error> Create(
      const std::filesystem::path& path, std::string_view bytes,
      const std::filesystem::path& model) = 0;
  // Writes into the file itself. An error can leave it with a part of the bytes.
  [[nodiscard]] virtual std::expected<void, Error> Overwrite(const std::filesystem::path& path,
                                                             std::string_view bytes) = 0;
  // Gives `from` the name `to` of the same folder, in one step, in place of the file that has it.
  // One that somebody has open and does not let be replaced is waited for, two seconds at most.
  [[nodiscard]] virtual std::expected<void, Error> Replace(const std::filesystem::path& from,
                                                           const std::filesystem::path& to) = 0;
  // Gives `from` the name `to`, which must be free, on the same volume.
  [[nodiscard]] virtual std::expected<void, Error> Move(const std::filesystem::path& from,
                                                        const std::filesystem::path& to) = 0;
  // Gives the file a second name `to`, which must be free, on the same volume.
  [[nodiscard]] virtual std::expected<void, Error> Link(const std::filesystem::path& from,
                                                        const std::filesystem::path& to) = 0;
  [[nodiscard]] virtual std::expected<void, Error> Remove(const std::filesystem::path& path) = 0;
  // Makes a folder and those above it, which only this user can enter. One that exists is no error.
  [[nodiscard]] virtual std::expected<void, Error> MakeFolder(
      const std::filesystem::path& folder) = 0;
};

[[nodiscard]] FileSystem& SystemFiles();

// Whether Create failed because of the folder, whose files may be writable all the same.
[[nodiscard]] bool RefusesNewFiles(const Error& error);

}  // namespace declarium
