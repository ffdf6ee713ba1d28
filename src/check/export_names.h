// What is known of the names that DLLs export, beside what a library declares.
#pragma once

#include <string_view>

namespace declarium::check {

// Whether the DLL exports the name beside one with A or W, or in other letters. `dll` is a key, as
// DllKey makes it.
[[nodiscard]] bool HasPlainEntry(std::u16string_view dll, std::u16string_view name);

// Whether what one of the DLLs exports the other may export too, by forwarding or as a copy.
[[nodiscard]] bool MayShareEntries(std::u16string_view first, std::u16string_view second);

}  // namespace declarium::check
