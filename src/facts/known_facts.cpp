#include "facts/known_facts.h"

#include <algorithm>

#include "library/file_io.h"

namespace declarium {

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

std::vector<FactsFile> FactsBeside(const std::vector<std::filesystem::path>& libraries) {
  std::vector<FactsFile> facts;
  for (const auto& library : libraries)
    if (auto file = FactsFile::OpenBeside(library)) facts.push_back(*std::move(file));
  return facts;
}

std::vector<FactsFile> FactsFor(const std::filesystem::path& library,
                                const std::filesystem::path& program) {
  auto libraries = BundledLibraries(program);
  if (!library.empty()) {
    std::erase_if(libraries, [own = IdentityOf(library)](const auto& bundled) {
      return IdentityOf(bundled) == own;
    });
    libraries.insert(libraries.begin(), library);
  }
  return FactsBeside(libraries);
}

}  // namespace declarium
