// What is known of procedures, constants and records beside their declarations.
#pragma once

#include "header_model.h"
#include "import_library.h"
#include "metadata.h"
#include "overrides.h"
#include "rows.h"

namespace declarium::win32_library {

struct Knowledge {
  const ImportLibraries& libraries;
  const Metadata& metadata;
  const Overrides& overrides;
  const std::vector<DeclareRow>& hand_kept;
  Platform platform = Platform::kX86;
};

}  // namespace declarium::win32_library
