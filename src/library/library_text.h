// The memory that a library's texts take.
#pragma once

#include <cstddef>

#include "library/library.h"

namespace declarium {

// In units of text.
struct TextUse {
  std::size_t used;  // by the names and item strings
  std::size_t held;  // by the arenas that they lie in
};

[[nodiscard]] TextUse TextUseOf(const Library& library);

// Moves the texts of all lists into one new arena when the old ones hold much more than them: every
// item added brings an arena, and those removed or replaced leave theirs behind. Views into the
// library's lists are invalid then.
void CompactText(Library& library);

}  // namespace declarium
