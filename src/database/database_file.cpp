#include "database/database_file.h"

#include "basic/code_page.h"
#include "database/file_format.h"
#include "database/file_io.h"

namespace declarium {
namespace {

constexpr std::size_t kLongestTitle = 64 * 1024;

}  // namespace

std::expected<Database, Error> LoadLibraryFile(const std::filesystem::path& path) {
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return std::unexpected(bytes.error());
  return ParseLibrary(*bytes, path);
}

std::expected<void, Error> SaveLibraryFile(const Database& database,
                                           const std::filesystem::path& path) {
  return WriteWholeFile(path, LibraryBytes(database));
}

std::u16string ReadDatabaseTitle(const std::filesystem::path& path) {
  const auto bytes = ReadFileUntil(path, static_cast<char>(kSectionSeparator), kLongestTitle);
  return bytes ? DecodeCodePage(*bytes) : std::u16string();
}

}  // namespace declarium
