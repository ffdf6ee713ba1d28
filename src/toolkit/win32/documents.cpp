// Files shown by other programs.
#include <windows.h>
#include <shellapi.h>

#include "toolkit/win32/toolkit.h"
#include "win32/wide.h"

namespace declarium::win32 {

bool Win32Toolkit::OpenDocument(std::u16string_view path) {
  // Results up to this number are errors.
  constexpr INT_PTR kLastError = 32;
  const std::u16string file(path);
  return reinterpret_cast<INT_PTR>(ShellExecuteW(OwnerWindow(), L"open", Wide(file), nullptr,
                                                 nullptr, SW_SHOWNORMAL)) > kLastError;
}

}  // namespace declarium::win32
