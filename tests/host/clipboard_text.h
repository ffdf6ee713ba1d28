// The system's clipboard as text, from a program that owns nothing on it.
#pragma once

#include <string>

namespace declarium {

// Empty when there is no text.
[[nodiscard]] std::wstring ClipboardText();
// Replaces what is there.
void SetClipboardText(const std::wstring& text);

}  // namespace declarium
