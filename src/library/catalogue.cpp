#include "library/catalogue.h"

#include <algorithm>
#include <utility>

#include "library/file_io.h"
#include "library/file_name.h"
#include "library/library_file.h"
#include "text/text.h"

namespace declarium {
namespace {

std::u16string LoweredName(const std::filesystem::path& path) {
  return LowerCase(NameOfPath(path));
}

template <class Predicate>
std::optional<std::size_t> FindFirst(const Catalogue& catalogue, Predicate predicate) {
  const auto found = std::ranges::find_if(catalogue, predicate);
  if (found == catalogue.end()) return std::nullopt;
  return static_cast<std::size_t>(found - catalogue.begin());
}

}  // namespace

Catalogue EnumDatabases(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (auto& path : ListFolder(folder)) {
    if (LoweredName(path.filename()).ends_with(u".api") && StatusOf(path)) {
      files.push_back(std::move(path));
    }
  }
  std::ranges::sort(files, {}, [](const auto& path) {
    return std::pair(LoweredName(path.filename()), path.native());
  });
  Catalogue catalogue;
  for (const auto& path : files) catalogue.push_back({ReadLibraryTitle(path), path});
  return catalogue;
}

std::optional<std::size_t> FindTitle(const Catalogue& catalogue, std::u16string_view title) {
  return FindFirst(catalogue, [&](const auto& entry) { return entry.title == title; });
}

std::optional<std::size_t> FindPath(const Catalogue& catalogue, const std::filesystem::path& path) {
  return FindFirst(catalogue,
                   [&](const auto& entry) { return entry.path.native() == path.native(); });
}

std::optional<std::size_t> StartupRow(const Catalogue& catalogue, int remembered_row,
                                      std::u16string_view remembered_title) {
  if (catalogue.empty()) return std::nullopt;
  if (remembered_row == -1) return 0;
  if (remembered_row < 0) return std::nullopt;
  const auto row = static_cast<std::size_t>(remembered_row);
  if (row >= catalogue.size() || catalogue[row].title != remembered_title) return std::nullopt;
  return row;
}

}  // namespace declarium
