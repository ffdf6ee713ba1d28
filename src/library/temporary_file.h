// Temporary files: a file's new content is written to one beside it, which then replaces it. A
// saver that is killed leaves its temporary file; the next save into the same folder removes it.
#pragma once

#include <filesystem>
#include <string_view>

namespace declarium {

// A new name in `folder` for a temporary file of the process.
[[nodiscard]] std::filesystem::path TemporaryFileIn(const std::filesystem::path& folder,
                                                    unsigned long process);

// Whether a file's name, without its folder, is one that TemporaryFileIn gives.
[[nodiscard]] bool IsTemporaryFileName(std::string_view name);

// Removes the temporary files of a folder (empty: the current one) that are older than a minute and
// that no saver holds. What cannot be removed stays, without an error.
void RemoveAbandonedFiles(const std::filesystem::path& folder);

// Removes one temporary file unless its saver still runs. One source per operating system has it.
void RemoveUnlessHeld(const std::filesystem::path& temporary_file);

}  // namespace declarium
