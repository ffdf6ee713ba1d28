#include "library/library_file.h"

#include "library/file_format.h"
#include "library/file_io.h"
#include "library/file_saver.h"
#include "text/code_page.h"

namespace declarium {
namespace {

constexpr std::size_t kLongestTitle = 64 * 1024;

}  // namespace

std::expected<Library, Error> LoadLibraryFile(const std::filesystem::path& path) {
  const auto read = ReadStamped(path);
  if (!read) return std::unexpected(read.error());
  auto library = ParseLibrary(read->bytes, path);
  if (library) library->stamp = read->stamp;
  return library;
}

std::expected<Saved, NotSaved> SaveLibraryFile(FileSaver& saver, const Library& library,
                                               const std::filesystem::path& path) {
  const auto refuse = [](const Error& error) { return std::unexpected(NotSaved{error, false}); };
  if (!library.IsWhole()) {
    return refuse({ErrorKind::kCannotWrite, PathText(path), "the library was loaded only in part"});
  }
  const auto bytes = LibraryBytes(library);
  if (const auto item = FindUnkeepable(library, bytes)) {
    return refuse({ErrorKind::kCannotKeep, *item, "holds a character that no library can keep"});
  }
  return saver.Save(path, bytes);
}

std::u16string ReadLibraryTitle(const std::filesystem::path& path) {
  const auto bytes = ReadFileUntil(path, static_cast<char>(kSectionSeparator), kLongestTitle);
  return bytes ? DecodeCodePage(*bytes) : std::u16string();
}

}  // namespace declarium
