// Which facts there are for the declarations of a library: its own and those that come with the
// program.
#pragma once

#include <filesystem>
#include <vector>

#include "facts/facts_file.h"

namespace declarium {

// The libraries with facts that come with the program, by the program's folder: beside it, or where
// a package for Debian puts them. In the order of their names, none when there are none.
[[nodiscard]] std::vector<std::filesystem::path> BundledLibraries(
    const std::filesystem::path& program);

// The facts beside the libraries, of those that have some.
[[nodiscard]] std::vector<FactsFile> FactsBeside(
    const std::vector<std::filesystem::path>& libraries);

// The facts beside `library`, then those of the other libraries that come with the program. Either
// path may be empty for none.
[[nodiscard]] std::vector<FactsFile> FactsFor(const std::filesystem::path& library,
                                              const std::filesystem::path& program);

}  // namespace declarium
