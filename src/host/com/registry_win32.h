// The system registry itself.
#pragma once

#include <memory>

#include "host/registry.h"

namespace declarium::com {

[[nodiscard]] std::unique_ptr<Registry> SystemRegistry();

}  // namespace declarium::com
