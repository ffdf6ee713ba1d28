// Items by the names that a command line gives them.
#pragma once

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

// The library's items of these names, in the order given. A name is looked up without regard to
// case among the constants, then the declarations, then the records; "type:RECT" names the kind.
// Throws CommandFailed when one is unknown, with the nearest names of the library in the message.
// The views refer into the library or the excerpt.
[[nodiscard]] std::vector<ItemView> ResolveNames(const Library& library,
                                                 std::span<const std::string> names);
[[nodiscard]] std::vector<ItemView> ResolveNames(const LibraryExcerpt& excerpt,
                                                 std::span<const std::string> names);

}  // namespace declarium::cli
