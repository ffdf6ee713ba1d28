#include "cli/replacement.h"

#include <filesystem>

#include "cli/library_files.h"
#include "cli/session.h"

#include "library/file_format.h"
#include "library/file_io.h"
#include "source/source_check.h"
#include "text/encoding.h"

namespace declarium::cli {
namespace {

// UTF-16 is full of the bytes that part a library's sections.
bool IsLibrary(std::string_view bytes, const Encoding& encoding) {
  return encoding.form == Encoding::Form::kCodePage && CutIntoSections(bytes).items.has_value();
}

CommandFailed Refused(const std::string& file, const std::string& reason) {
  return {ExitStatus::kFileFailed, PathText(PathOf(file)) + ": " + reason};
}

}  // namespace

void CheckReplaceable(const std::string& file, Force force) {
  const auto path = PathOf(file);
  std::error_code ignored;
  if (force == Force::kYes || !std::filesystem::is_regular_file(path, ignored)) return;
  const auto bytes = ReadWholeFile(path);
  if (!bytes) throw FileFailed(bytes.error());
  const auto encoding = RecognizeEncoding(*bytes, kLibraryEncoding);
  if (IsLibrary(*bytes, encoding)) throw Refused(file, "is a library; --force replaces it");
  if (!IsWrittenSource(DecodeText(*bytes, encoding))) {
    throw Refused(file, "holds more than the declarations of a library; --force replaces it");
  }
}

void CheckModule(const std::string& file, std::string_view bytes, Force force) {
  if (force == Force::kYes) return;
  const auto encoding = RecognizeEncoding(bytes, kLibraryEncoding);
  if (IsLibrary(bytes, encoding)) {
    throw Refused(file, "is a library; --force inserts all the same");
  }
  if (!IsSource(DecodeText(bytes, encoding))) {
    throw Refused(file, "is no Visual Basic source; --force inserts all the same");
  }
}

}  // namespace declarium::cli
