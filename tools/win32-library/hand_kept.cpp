#include "hand_kept.h"

#include <fstream>
#include <iterator>

#include "text/text.h"
#include "vb/module.h"

namespace declarium::win32_library {

std::expected<std::vector<DeclareRow>, std::string> ReadHandKept(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::unexpected(path + ": cannot be read");
  const auto text = FromUtf8(std::string(std::istreambuf_iterator<char>(file), {}));
  const auto module = vb::ReadModule(text);
  if (!module.errors.empty())
    return std::unexpected(path + ':' + std::to_string(module.errors.front().place.line) +
                           ": expected " + std::string(module.errors.front().expected));
  std::vector<DeclareRow> rows;
  for (const auto& declaration : module.declarations) {
    if (!declaration.As<vb::External>())
      return std::unexpected(path + ':' + std::to_string(declaration.place.line) +
                             ": expected a Declare");
    rows.push_back({ToUtf8(declaration.name), ToUtf8(declaration.text), kHandKept});
  }
  return rows;
}

}  // namespace declarium::win32_library
