// Names for parameters that neither the headers nor the metadata name: what their type says.
#pragma once

#include <string>

#include "header_model.h"

namespace declarium::win32_library {

// Whether the name only counts: "param0", as the metadata has where Microsoft's headers have none.
[[nodiscard]] bool IsPlaceholder(const std::string& name);

// hWnd for HWND, lpLogfont for an address of LOGFONTA, lpGraphics for one of GpGraphics, lpsz for
// text, fillMode for FillMode. Empty for a type that says no more than its size.
[[nodiscard]] std::string NameByType(const HeaderType& type, const Headers& headers);

}  // namespace declarium::win32_library
