// Copying the clipboard in a time that a user does not notice.
#pragma once

#include <chrono>
#include <windows.h>

#include "host/com/clipboard_contents.h"

namespace declarium::com {

// How long copying may take once the clipboard is open.
inline constexpr std::chrono::milliseconds kCopyLimit{300};

// The contents, whole. Fails when the clipboard cannot be had, and when copying takes longer than
// the limit: very much is on it, or its owner is slow to render what it promised. The clipboard is
// as it was then, and another thread gives it back when it gets there. Messages that other threads
// send are handled meanwhile, for this one may own what is to be rendered.
[[nodiscard]] HostResult<ClipboardContents> SaveClipboard();

}  // namespace declarium::com
