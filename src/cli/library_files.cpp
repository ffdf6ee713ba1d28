#include "cli/library_files.h"

#include <algorithm>

#include "cli/session.h"

#include "library/file_format.h"
#include "library/file_io.h"
#include "library/library_file.h"
#include "text/code_page.h"
#include "text/text.h"

namespace declarium::cli {

std::filesystem::path PathOf(const std::string& argument) {
  return std::u8string(argument.begin(), argument.end());
}

Library LoadLibrary(const std::string& file) {
  auto library = LoadLibraryFile(PathOf(file));
  if (!library) throw FileFailed(library.error());
  return std::move(*library);
}

LibraryExcerpt OpenExcerpt(const std::string& file) {
  auto excerpt = LibraryExcerpt::Open(PathOf(file));
  if (!excerpt) throw FileFailed(excerpt.error());
  return *std::move(excerpt);
}

namespace {

void CheckSaved(const Session& session, const std::expected<Saved, NotSaved>& saved) {
  session.SayRecovered(session.saver.TakeRecovered());
  if (!saved) throw FileFailed(saved.error());
  if (saved->not_kept) {
    session.Say("the old content could not be kept: " + saved->not_kept->Message());
  }
}

}  // namespace

void SaveLibrary(const Session& session, const Library& library, const std::string& file) {
  CheckSaved(session, SaveLibraryFile(session.saver, library, PathOf(file)));
}

void WriteBytes(const Session& session, std::string_view bytes, const std::string& file) {
  CheckSaved(session, session.saver.Save(PathOf(file), bytes));
}

void WriteSource(const Session& session, std::u16string_view text, const std::string& file) {
  WriteBytes(session, EncodeCodePage(text), file);
}

std::u16string CheckedTitle(const std::string& argument) {
  auto title = FromUtf8(argument);
  if (std::ranges::any_of(title, [](char16_t unit) { return unit <= kSectionSeparator; })) {
    throw CommandFailed(ExitStatus::kWrongUse, "a title cannot hold a control character");
  }
  return title;
}

}  // namespace declarium::cli
