// The catalogue: the library files of one folder. Entry i is row i of the catalogue combo box.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace declarium {

struct CatalogueEntry {
  std::u16string title;
  std::filesystem::path path;
};

using Catalogue = std::vector<CatalogueEntry>;

// The ordinary files of `folder` whose extension is ".api" in any case, by file name without regard
// to case (the order in which Windows lists a folder). A folder that cannot be listed has none.
[[nodiscard]] Catalogue EnumDatabases(const std::filesystem::path& folder);

// The first entry with exactly this title; titles need not be unique.
[[nodiscard]] std::optional<std::size_t> FindTitle(const Catalogue& catalogue,
                                                   std::u16string_view title);
// The first entry with exactly this path.
[[nodiscard]] std::optional<std::size_t> FindPath(const Catalogue& catalogue,
                                                  const std::filesystem::path& path);

// The row to select at start, from the row and title remembered at the last closing: row 0 when
// none was selected then (-1), the remembered row when it still has that title, none otherwise or
// when the catalogue is empty.
[[nodiscard]] std::optional<std::size_t> StartupRow(const Catalogue& catalogue, int remembered_row,
                                                    std::u16string_view remembered_title);

}  // namespace declarium
