// Names of files as dialogs, command lines and messages have them: UTF-16, well-formed or not.
// Windows lets any 16-bit units be a name, a lone surrogate too, and such a name comes back from
// here unchanged; where names are bytes, those that are no UTF-8 are shown as U+FFFD.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace declarium {

[[nodiscard]] std::filesystem::path PathOfName(std::u16string_view name);
[[nodiscard]] std::u16string NameOfPath(const std::filesystem::path& path);

}  // namespace declarium
