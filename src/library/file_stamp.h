// What tells whether somebody else has changed a file since this program read or wrote it.
#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

#include "text/error.h"

namespace declarium {

struct FileStamp {
  std::int64_t written = 0;  // time of the last write, as in FileStatus; 0 when unknown
  std::uint64_t size = 0;    // bytes
  std::uint64_t hash = 0;    // of the bytes, see HashOf
  bool operator==(const FileStamp&) const = default;
};

// A 64-bit hash, the same on every system. Fast, and no protection against forgery.
[[nodiscard]] std::uint64_t HashOf(std::string_view bytes) noexcept;

// The stamp of a file that has just been written with so many bytes of this hash.
[[nodiscard]] FileStamp StampOf(const std::filesystem::path& path, std::uint64_t size,
                                std::uint64_t hash);

struct StampedBytes {
  std::string bytes;
  FileStamp stamp;
};

// ReadWholeFile with the stamp of what was read.
[[nodiscard]] std::expected<StampedBytes, Error> ReadStamped(const std::filesystem::path& path);

// Whether the file holds other bytes than when `stamp` was taken. It is read only when its time has
// changed and its size has not. A file that is missing has nothing that could be lost: false.
[[nodiscard]] bool HasChangedSince(const FileStamp& stamp, const std::filesystem::path& path);

}  // namespace declarium
