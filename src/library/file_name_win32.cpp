#include "library/file_name.h"

namespace declarium {

std::filesystem::path PathOfName(std::u16string_view name) {
  return std::wstring(name.begin(), name.end());
}

std::u16string NameOfPath(const std::filesystem::path& path) {
  return {path.native().begin(), path.native().end()};
}

}  // namespace declarium
