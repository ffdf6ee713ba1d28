#include "cli/library.h"

#include <algorithm>

#include "cli/session.h"

#include "basic/code_page.h"
#include "basic/text.h"
#include "database/database_file.h"
#include "database/file_format.h"
#include "database/file_io.h"

namespace declarium::cli {

std::filesystem::path PathOf(const std::string& argument) {
  return std::u8string(argument.begin(), argument.end());
}

Database LoadLibrary(const std::string& file) {
  auto database = LoadLibraryFile(PathOf(file));
  if (!database) throw FileFailed(database.error());
  return std::move(*database);
}

void SaveLibrary(const Database& database, const std::string& file) {
  if (const auto saved = SaveLibraryFile(database, PathOf(file)); !saved) {
    throw FileFailed(saved.error());
  }
}

void WriteSource(std::u16string_view text, const std::string& file) {
  if (const auto written = WriteWholeFile(PathOf(file), EncodeCodePage(text)); !written) {
    throw FileFailed(written.error());
  }
}

std::u16string CheckedTitle(const std::string& argument) {
  auto title = FromUtf8(argument);
  if (std::ranges::any_of(title, [](char16_t unit) { return unit <= kSectionSeparator; })) {
    throw CommandFailed(ExitStatus::kWrongUse, "a title cannot hold a control character");
  }
  return title;
}

}  // namespace declarium::cli
