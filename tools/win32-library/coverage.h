// How much of the metadata the libraries have.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "metadata.h"

namespace declarium::win32_library {

struct Coverage {
  std::size_t listed = 0;
  std::size_t there = 0;
};

// The metadata's constants and members of enumerations outside COM and WinRT, each name once, and
// those of them for which `has` is true.
[[nodiscard]] Coverage CoverageOfConstants(const Metadata& metadata,
                                           const std::function<bool(const std::string&)>& has);

}  // namespace declarium::win32_library
