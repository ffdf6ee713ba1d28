// The system's clipboard as text, from a program that keeps no window.
#pragma once

#include <string>
#include <string_view>

namespace declarium {

// Empty when there is no text.
[[nodiscard]] std::u16string ClipboardText();
// Replaces what is there.
void SetClipboardText(std::u16string_view text);

}  // namespace declarium
