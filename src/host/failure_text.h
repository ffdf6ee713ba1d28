// What the user is told of a call to the host that failed.
#pragma once

#include <string>

#include "host/host_object_model.h"

namespace declarium {

// Why it failed, in whole sentences: the host is busy, is gone, or said this; the status last.
[[nodiscard]] std::u16string ReasonText(const HostError& error);

// A status in eight hexadecimal digits.
[[nodiscard]] std::u16string StatusText(std::int32_t code);

}  // namespace declarium
