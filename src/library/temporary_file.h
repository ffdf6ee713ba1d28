// The names of temporary files, in which the new content of a file is written beside the file that
// it is to replace:
//
//   .declarium-4711.123456.0f1e2d3c4b5a6978.Win32.api.tmp
//
// the process, a random number, the hash of the whole content (library/file_stamp.h) and the name
// of the file to replace. So what a killed saver left tells whether it is whole and where it
// belongs. Without the last two when the name would become too long for the system, and when the
// file's name begins with a point; version 3.0.0 gave that form to all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace declarium {

// A new name for the temporary file in which `process` is going to write content of this hash for
// `target`, in the folder of `target`.
[[nodiscard]] std::filesystem::path TemporaryFileFor(const std::filesystem::path& target,
                                                     unsigned long process, std::uint64_t hash);

struct TemporaryFileName {
  std::optional<std::uint64_t> hash;  // of the whole content
  std::filesystem::path target;       // a file name without folder; empty when the name has none
};

// What the name of a temporary file tells; nullopt for any other file's name. A folder in `path`
// does not matter.
[[nodiscard]] std::optional<TemporaryFileName> ParseTemporaryFileName(
    const std::filesystem::path& path);

}  // namespace declarium
