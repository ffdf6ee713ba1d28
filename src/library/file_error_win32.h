// What the Windows sources of file_io.h and file_system.h have in common.
#pragma once

#include <expected>
#include <filesystem>

#include "text/error.h"
#include "win32/unique_handle.h"

namespace declarium::win32 {

// `code` is a GetLastError.
[[nodiscard]] std::unexpected<Error> Failed(ErrorKind kind, const std::filesystem::path& path,
                                            DWORD code);

}  // namespace declarium::win32
