// Items by the names that a command line gives them.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/library.h"
#include "library/library_excerpt.h"

namespace declarium::cli {

// The kind of the word const, declare or type in any case.
[[nodiscard]] std::optional<Kind> KindOfWord(std::string_view word);

// Where an item stands in its library.
struct ItemPlace {
  Kind kind;
  std::size_t position;  // 0-based, in the lists of the kind

  friend auto operator<=>(const ItemPlace&, const ItemPlace&) = default;
};

// Where the library's items of these names stand, in the order given. A name is looked up as it is
// spelled among the constants, then the declarations, then the records, and when none of them is
// spelled so, without regard to case in the same order; "type:RECT" names the kind. Throws
// CommandFailed when one is unknown, with the nearest names of the library in the message, and when
// several spellings of one kind could be meant, with all of them.
[[nodiscard]] std::vector<ItemPlace> ResolvePlaces(const Library& library,
                                                   std::span<const std::string> names);

// The items themselves. The views refer into the library or the excerpt.
[[nodiscard]] std::vector<ItemView> ResolveNames(const Library& library,
                                                 std::span<const std::string> names);
[[nodiscard]] std::vector<ItemView> ResolveNames(const LibraryExcerpt& excerpt,
                                                 std::span<const std::string> names);

}  // namespace declarium::cli
