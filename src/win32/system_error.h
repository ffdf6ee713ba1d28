// What the system says about a failure.
#pragma once

#include <string>

#include "win32/system.h"

namespace declarium::win32 {

// The system's sentence for an error number, without the full stop and line end at its end;
// "error N" for a number that it does not know.
[[nodiscard]] std::u16string SystemErrorText(DWORD code);

}  // namespace declarium::win32
