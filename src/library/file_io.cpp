#include "library/file_io.h"

#include <fstream>
#include <utility>
#include <vector>

namespace declarium {

bool HaveSameContent(const std::filesystem::path& first, const std::filesystem::path& second) {
  constexpr std::size_t kPiece = 64 * 1024;
  std::ifstream one(first, std::ios::binary);
  std::ifstream other(second, std::ios::binary);
  std::vector<char> pieces(2 * kPiece);
  while (one && other) {
    one.read(pieces.data(), kPiece);
    other.read(pieces.data() + kPiece, kPiece);
    const std::string_view read(pieces.data(), static_cast<std::size_t>(one.gcount()));
    if (read != std::string_view(pieces.data() + kPiece, static_cast<std::size_t>(other.gcount())))
      return false;
  }
  return one.eof() && other.eof();
}

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
