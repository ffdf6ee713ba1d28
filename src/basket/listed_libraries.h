// The libraries that a list file names, in files, and the ones that a list of a basket has to name.
#pragma once

#include <deque>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "basket/list_file.h"
#include "library/library.h"

namespace declarium {

// A path that the list file `list` has, from the folder of that file. "\" and "/" both part names.
[[nodiscard]] std::filesystem::path PathFromList(const std::filesystem::path& list,
                                                 std::u16string_view written);

// How the list file names `path`: from its own folder with "/" where there is a way, else whole.
[[nodiscard]] std::u16string NameInList(const std::filesystem::path& list,
                                        const std::filesystem::path& path);

struct ListedLibraries {
  std::vector<const Library*> all;  // to look names up in, in their order
  std::deque<Library> loaded;       // keeps those that were not open
  std::vector<std::u16string> unreadable;
};

// What the list's #library lines name: `open` where it is that file, also with unsaved changes. A
// list that was moved finds a library at its old name no more: one of the same file name is taken
// then, `open` or a file of `folder`. `open` alone when the list names none, or none can be read.
// `open` must outlive the result.
[[nodiscard]] ListedLibraries OpenListed(const ListFile& list, const std::filesystem::path& path,
                                         const Library& open, const std::filesystem::path& folder);

struct BasketSources {
  std::vector<std::filesystem::path> libraries;  // in the order to look names up in
  // Names of items that none of them has, or that the first with such an item has otherwise.
  std::vector<std::u16string> lost;
};

// Where the items of a basket can be found again: in `open`, which has to be in a file for that,
// else in the first of `others` that has one of the kind and name. Libraries that give nothing are
// not among them.
[[nodiscard]] BasketSources FindSources(std::span<const ItemView> items, const Library& open,
                                        const std::vector<std::filesystem::path>& others);

}  // namespace declarium
