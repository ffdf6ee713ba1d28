// Libraries in files.
#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include "library/file_saver.h"
#include "library/library.h"
#include "text/error.h"

namespace declarium {

// Reads and parses a library file, and takes its stamp. The error tells a file that cannot be read
// from one that is no library.
[[nodiscard]] std::expected<Library, Error> LoadLibraryFile(const std::filesystem::path& path);

// Writes the library to `path`: the one place where libraries are saved. A library that is not
// whole, and one whose file would not load again as the same library, is refused with kCannotKeep,
// and nothing is written. Changes neither the library's path nor its changed flag nor its stamp.
[[nodiscard]] std::expected<Saved, NotSaved> SaveLibraryFile(FileSaver& saver,
                                                             const Library& library,
                                                             const std::filesystem::path& path);

// The title of a library file, without reading the rest; empty when the file cannot be read or
// holds no byte 2 in its first 64 KB.
[[nodiscard]] std::u16string ReadLibraryTitle(const std::filesystem::path& path);

}  // namespace declarium
