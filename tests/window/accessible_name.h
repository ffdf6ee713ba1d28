// The accessible name of a window of another program, as a screen reader gets it.
#pragma once

#include <string>
#include <windows.h>

namespace declarium::window_driver {

// The window's own name through the system's accessibility interface, without the "&" of an access
// key; empty when it has none.
[[nodiscard]] std::u16string AccessibleNameOf(HWND window);

}  // namespace declarium::window_driver
