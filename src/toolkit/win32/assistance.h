// Names of controls for assistive tools.
#pragma once

#include <string>

#include "toolkit/win32/system.h"

namespace declarium::win32 {

// Gives the window a name that is not shown. Where the system offers no such service, nothing
// happens.
void NameForAssistance(HWND window, const std::u16string& name);

// Takes the name away, which the system would keep beyond the window's end.
void ForgetNameForAssistance(HWND window);

}  // namespace declarium::win32
