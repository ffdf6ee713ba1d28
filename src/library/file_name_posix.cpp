#include "library/file_name.h"
#include "text/text.h"

namespace declarium {

std::filesystem::path PathOfName(std::u16string_view name) {
  return ToUtf8(name);
}

std::u16string NameOfPath(const std::filesystem::path& path) {
  return FromUtf8(path.native());
}

}  // namespace declarium
