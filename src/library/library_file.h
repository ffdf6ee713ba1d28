// Libraries in files.
#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include "library/library.h"
#include "text/error.h"

namespace declarium {

// Reads and parses a library file. The error distinguishes a file that cannot be read from one
// that is no library.
[[nodiscard]] std::expected<Library, Error> LoadLibraryFile(const std::filesystem::path& path);

// Writes the library to `path`. Changes neither the library's path nor its changed flag.
[[nodiscard]] std::expected<void, Error> SaveLibraryFile(const Library& library,
                                                         const std::filesystem::path& path);

// The title of a library file, without reading the rest; empty when the file cannot be read or
// holds no byte 2 in its first 64 KB.
[[nodiscard]] std::u16string ReadDatabaseTitle(const std::filesystem::path& path);

}  // namespace declarium
