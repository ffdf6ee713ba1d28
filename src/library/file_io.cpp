#include "library/file_io.h"

#include <utility>

namespace declarium {

FileView ViewOf(std::string bytes) {
  const auto owner = std::make_shared<const std::string>(std::move(bytes));
  return {*owner, owner};
}

std::expected<FileView, Error> ViewFile(const std::filesystem::path& path) {
  if (auto view = MapFile(path)) return *std::move(view);
  auto bytes = ReadWholeFile(path);
  if (!bytes) return std::unexpected(bytes.error());
  return ViewOf(*std::move(bytes));
}

}  // namespace declarium
