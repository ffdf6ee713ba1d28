// The two finders of the main window: names that contain a pattern, and the row that typing a
// beginning selects.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "library/string_list.h"

namespace declarium {

// The positions, in list order, of the names whose lower-cased form contains the lower-cased
// pattern. Wildcards in `text` work as wildcards (vb/like.h). `text` must not be empty.
[[nodiscard]] std::vector<std::size_t> FindNames(const StringList& names, std::u16string_view text);

// The rows of a list as the type-ahead reads them.
struct RowSource {
  std::size_t count;
  std::function<std::u16string_view(std::size_t)> row;  // 0-based, below count
};

[[nodiscard]] RowSource RowsOf(const StringList& names);

// The first row, from the chosen block on, that begins with `text` without regard to case; none
// when no row does. Reads two rows per hundredth of the list to choose the block, then the rows
// from there on, relying on the ascending order of the lower-cased rows. `text` must not be empty.
[[nodiscard]] std::optional<std::size_t> TypeAheadRow(const RowSource& rows,
                                                      std::u16string_view text);

}  // namespace declarium
