#include "cli/library_files.h"

#include "cli/output.h"
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

// Why saving would overwrite what somebody else wrote; empty when it would not.
std::string Conflict(const Library& library) {
  const auto& path = library.path;
  if (library.stamp) {
    return HasChangedSince(*library.stamp, path) ? "was changed by somebody else since it was read"
                                                 : "";
  }
  std::error_code ignored;
  return std::filesystem::exists(path, ignored) ? "was made by somebody else meanwhile" : "";
}

void CheckSaved(const Session& session, const std::expected<Saved, NotSaved>& saved) {
  session.SayRecovered(session.saver.TakeRecovered());
  if (!saved) throw FileFailed(saved.error());
  if (saved->not_kept) {
    session.Say("the old content could not be kept: " + saved->not_kept->Message());
  }
}

}  // namespace

void SaveLibrary(const Session& session, const Library& library, Force force) {
  const auto& path = library.path;
  if (force == Force::kNo) {
    if (const auto conflict = Conflict(library); !conflict.empty()) {
      throw CommandFailed(ExitStatus::kFileFailed,
                          PathText(path) + ": " + conflict + "; --force replaces it");
    }
  }
  CheckSaved(session, SaveLibraryFile(session.saver, library, path));
}

Encoding EncodingOf(const std::string& name) {
  if (name.empty()) return kLibraryEncoding;
  if (const auto encoding = EncodingOfName(name)) return *encoding;
  throw CommandFailed(ExitStatus::kWrongUse,
                      "--encoding: " + OneLine(FromUtf8(name)) + " is none of " + EncodingNames());
}

void WriteBytes(const Session& session, std::string_view bytes, const std::string& file) {
  CheckSaved(session, session.saver.Save(PathOf(file), bytes));
}

void WriteSource(const Session& session, std::u16string_view text, const std::string& file) {
  WriteBytes(session, EncodeCodePage(text), file);
}

std::u16string CheckedTitle(const std::string& argument) {
  auto title = FromUtf8(argument);
  if (const auto character = FindUnkeepableCharacter(title)) {
    throw CommandFailed(ExitStatus::kWrongUse, "a title cannot hold " + CharacterText(*character));
  }
  return title;
}

}  // namespace declarium::cli
