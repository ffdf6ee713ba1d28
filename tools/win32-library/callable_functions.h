// Which procedures of the metadata a 32-bit program of Visual Basic can call.
#pragma once

#include "metadata.h"

namespace declarium::win32_library {

// False for procedures whose caller clears the stack (the metadata's files do not tell), and for
// those that 32-bit Windows does not have.
[[nodiscard]] bool IsCallable(const MetaFunction& function);

}  // namespace declarium::win32_library
