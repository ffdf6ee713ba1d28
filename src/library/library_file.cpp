#include "library/library_file.h"

#include "library/file_format.h"
#include "library/file_io.h"
#include "text/code_page.h"

namespace declarium {
namespace {

constexpr std::size_t kLongestTitle = 64 * 1024;

}  // namespace

std::expected<Library, Error> LoadLibraryFile(const std::filesystem::path& path) {
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return std::unexpected(bytes.error());
  return ParseLibrary(*bytes, path);
}

std::expected<void, Error> SaveLibraryFile(const Library& library,
                                           const std::filesystem::path& path) {
  return WriteWholeFile(path, LibraryBytes(library));
}

std::u16string ReadDatabaseTitle(const std::filesystem::path& path) {
  const auto bytes = ReadFileUntil(path, static_cast<char>(kSectionSeparator), kLongestTitle);
  return bytes ? DecodeCodePage(*bytes) : std::u16string();
}

}  // namespace declarium
