#include "cli/bundled_libraries.h"

#include <algorithm>

#include "facts/facts_file.h"

namespace declarium::cli {

std::vector<std::filesystem::path> BundledLibraries(const std::filesystem::path& program) {
  std::vector<std::filesystem::path> libraries;
  if (program.empty()) return libraries;
  std::error_code ignored;
  for (const auto& folder : {program, program.parent_path() / "share" / "declarium-cli"}) {
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
      const auto& path = entry.path();
      if (path.extension() == ".api" && std::filesystem::exists(FactsPathOf(path), ignored))
        libraries.push_back(path);
    }
    if (!libraries.empty()) break;
  }
  std::ranges::sort(libraries);
  return libraries;
}

}  // namespace declarium::cli
