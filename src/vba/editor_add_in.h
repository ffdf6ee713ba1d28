// The add-in object that a VBA editor creates, one for each editor.
#pragma once

#include <unknwn.h>
#include <windows.h>

#include "win32/com_ptr.h"

namespace declarium::vba {

// The factory of add-in objects; null without memory.
[[nodiscard]] win32::ComPtr<IClassFactory> MakeEditorAddInFactory();

}  // namespace declarium::vba
