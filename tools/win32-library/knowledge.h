// What is known of procedures, constants and records beside their declarations.
#pragma once

#include "import_library.h"
#include "metadata.h"
#include "overrides.h"

namespace declarium::win32_library {

struct Knowledge {
  const ImportLibraries& libraries;
  const Metadata& metadata;
  const Overrides& overrides;
};

}  // namespace declarium::win32_library
