// Changes of a text, by where they are made.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace declarium {

struct Edit {
  std::size_t offset = 0;  // 0-based, in UTF-16 units
  std::size_t length = 0;  // of what goes
  std::u16string text;     // what comes

  friend bool operator==(const Edit&, const Edit&) = default;
};

// `text` after the edits, which are in order and do not overlap. `start` is the offset of the text
// in what the edits count in.
[[nodiscard]] std::u16string Edited(std::u16string_view text, const std::vector<Edit>& edits,
                                    std::size_t start = 0);

}  // namespace declarium
