// The libraries that come with the program.
#pragma once

#include <filesystem>
#include <vector>

namespace declarium::cli {

// Those of them that have facts, by the folder of the program: beside it, or where a package for
// Debian puts them. In the order of their names, none when there are none.
[[nodiscard]] std::vector<std::filesystem::path> BundledLibraries(
    const std::filesystem::path& program);

}  // namespace declarium::cli
