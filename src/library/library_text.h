// The memory that the texts of a library's lists take.
#pragma once

#include <cstddef>
#include <span>

#include "library/library.h"

namespace declarium {

// In units of text.
struct TextUse {
  std::size_t used;  // by the names and item strings
  std::size_t held;  // by the arenas that they lie in
};

[[nodiscard]] TextUse TextUseOf(std::span<const KindLists> lists);

// Moves the texts of all lists into one new arena when the old ones hold much more than them: every
// item added brings an arena, and those removed or replaced leave theirs behind. Views into the
// lists are invalid then.
void CompactText(std::span<KindLists> lists);

}  // namespace declarium
