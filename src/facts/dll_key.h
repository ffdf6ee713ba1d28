// What names a DLL, however a Declare writes it.
#pragma once

#include <string>
#include <string_view>

namespace declarium {

// A DLL's name without folder and ".dll", in lower case: "kernel32".
[[nodiscard]] std::u16string DllKey(std::u16string_view written);

}  // namespace declarium
