// Whole files in and out. Two sources implement it, one per operating system; errors keep the
// system's number and name the file.
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "text/error.h"

namespace declarium {

// The path as UTF-8, for messages.
[[nodiscard]] std::string PathText(const std::filesystem::path& path);

// The whole content of a file, which others may have open. A folder is an error.
[[nodiscard]] std::expected<std::string, Error> ReadWholeFile(const std::filesystem::path& path);

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
  std::int64_t written;  // time of the last write, in the system's own units
  std::uint64_t size;    // bytes
};

// The status of an ordinary file; nullopt when there is none of this name.
[[nodiscard]] std::optional<FileStatus> StatusOf(const std::filesystem::path& path);

// What stands before the first byte `end` of a file, read in small blocks and never more than
// `limit` bytes; empty when the limit or the end of the file comes before that byte.
[[nodiscard]] std::expected<std::string, Error> ReadFileUntil(const std::filesystem::path& path,
                                                              char end, std::size_t limit);

// Makes `bytes` the content of the file, creating it or replacing what it held. The content goes to
// a temporary file in the same folder, is flushed and takes the old file's place in one step, so at
// every moment the file is the old or the new one, whole; permissions and, on Windows, attributes
// stay. Where the folder takes no new file, and where `path` is no ordinary file, it is written in
// place. A file that somebody else has open and does not let be replaced is waited for, for two
// seconds at most. On an error the old file is unchanged, except after a failed write in place.
// Temporary files that killed savers left in the folder go at the same time
// (library/temporary_file.h).
[[nodiscard]] std::expected<void, Error> WriteWholeFile(const std::filesystem::path& path,
                                                        std::string_view bytes);

}  // namespace declarium
