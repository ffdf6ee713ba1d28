// Whole files in, and what the system tells about files. Two sources implement it, one per
// operating system; errors keep the system's number and name the file.
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/error.h"

namespace declarium {

// The number by which the system knows this process.
[[nodiscard]] unsigned long ProcessNumber();

// The path as UTF-8, for messages.
[[nodiscard]] std::string PathText(const std::filesystem::path& path);

// The whole content of a file, which others may have open. A folder is an error.
[[nodiscard]] std::expected<std::string, Error> ReadWholeFile(const std::filesystem::path& path);

// Whether both files hold the same bytes; false where one cannot be read. They are read piece by
// piece up to the first difference.
[[nodiscard]] bool HaveSameContent(const std::filesystem::path& first,
                                   const std::filesystem::path& second);

// Bytes to be read, and what keeps them where they are.
struct FileView {
  std::string_view bytes;
  std::shared_ptr<const void> owner;
};

[[nodiscard]] FileView ViewOf(std::string bytes);

// A file's own pages as the bytes; nothing where the system or the file does not allow it. Nobody
// may shorten the file as long as the view lives: reading beyond its new end would end the process.
[[nodiscard]] std::optional<FileView> MapFile(const std::filesystem::path& path);

// ReadWholeFile without the copy, which costs several times what reading the file does, where
// MapFile works. For a process that changes nothing before it lets the view go.
[[nodiscard]] std::expected<FileView, Error> ViewFile(const std::filesystem::path& path);

struct FileStatus {
  std::int64_t written;  // time of the last write, nanoseconds since the start of 1970, UTC
  std::uint64_t size;    // bytes
};

// The status of an ordinary file; nullopt when there is none of this name.
[[nodiscard]] std::optional<FileStatus> StatusOf(const std::filesystem::path& path);

// The paths in a folder (empty: the current one); none when it cannot be listed.
[[nodiscard]] std::vector<std::filesystem::path> ListFolder(const std::filesystem::path& folder);

// The same for every way to write the path of a file: absolute, without "." and "..", and without
// upper case where the system does not tell it from lower case.
[[nodiscard]] std::filesystem::path IdentityOf(const std::filesystem::path& path);

// What stands before the first byte `end` of a file, read in small blocks and never more than
// `limit` bytes; empty when the limit or the end of the file comes before that byte.
[[nodiscard]] std::expected<std::string, Error> ReadFileUntil(const std::filesystem::path& path,
                                                              char end, std::size_t limit);

}  // namespace declarium
