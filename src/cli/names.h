// Items by the names that a command line gives them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/library.h"
#include "library/library_excerpt.h"
#include "library/sought_name.h"

namespace declarium::cli {

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

// What is told of a name that the library does not have: with the nearest names that it has.
[[nodiscard]] std::string UnknownName(const Library& library, const SoughtName& sought,
                                      std::string_view argument);
// What is told of a name that stands for several items; there is at least one.
[[nodiscard]] std::string SeveralSpellings(const Library& library,
                                           std::span<const ItemPlace> places,
                                           std::string_view argument);

}  // namespace declarium::cli
