#include "overrides.h"

#include <fstream>
#include <optional>

namespace declarium::win32_library {
namespace {

std::optional<Side> SideOf(const std::string& word) {
  if (word == "headers") return Side::kHeaders;
  if (word == "metadata") return Side::kMetadata;
  if (word == "neither") return Side::kNeither;
  return std::nullopt;
}

}  // namespace

std::expected<Overrides, std::string> ReadOverrides(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::unexpected(path + ": cannot be read");
  Overrides overrides;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    const std::size_t name = line.find('\t');
    const std::size_t side = line.find('\t', name + 1);
    const std::size_t reason = line.find('\t', side + 1);
    if (reason == std::string::npos || reason + 1 == line.size())
      return std::unexpected(path + ": no reason: " + line);
    const auto decided = SideOf(line.substr(side + 1, reason - side - 1));
    if (!decided) return std::unexpected(path + ": no side: " + line);
    Override decision{*decided, line.substr(reason + 1)};
    if (!overrides.emplace(line.substr(0, side), std::move(decision)).second)
      return std::unexpected(path + ": decided twice: " + line);
  }
  return overrides;
}

const Override* FindOverride(const Overrides& overrides, const std::string& kind,
                             const std::string& name) {
  const auto found = overrides.find(kind + "\t" + name);
  return found == overrides.end() ? nullptr : &found->second;
}

}  // namespace declarium::win32_library
