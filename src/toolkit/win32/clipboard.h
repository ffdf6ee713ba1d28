// The blocks of memory in which the clipboard keeps text.
#pragma once

#include <string>
#include <string_view>

#include "win32/system.h"

namespace declarium::win32 {

// The text in a block: up to its first NUL, at most all of it. Empty when it cannot be read.
[[nodiscard]] std::u16string TextIn(HGLOBAL memory);
// A new block with the text and a NUL behind it; nullptr when there is no memory.
[[nodiscard]] HGLOBAL MemoryWith(std::u16string_view text);

}  // namespace declarium::win32
