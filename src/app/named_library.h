// The library that a user names when he starts the program.
#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace declarium {

// The file that `words` name, where a name with blanks may stand without quotes as several words:
// as seen from `caller_folder`, which the program was started in, and when there is no such file,
// from `program_folder`. A full path that need not exist; empty without words.
[[nodiscard]] std::filesystem::path FindNamedLibrary(std::span<const std::u16string> words,
                                                     const std::filesystem::path& caller_folder,
                                                     const std::filesystem::path& program_folder);

}  // namespace declarium
