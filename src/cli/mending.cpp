#include "cli/mending.h"

#include <algorithm>

#include "cli/library_files.h"

#include "library/file_io.h"
#include "text/encoding.h"

namespace declarium::cli {

std::vector<check::Edit> WithoutOverlaps(std::vector<check::Edit> edits) {
  std::ranges::stable_sort(edits, {}, &check::Edit::offset);
  std::vector<check::Edit> kept;
  for (auto& edit : edits) {
    const bool touches = !kept.empty() && edit.offset <= kept.back().offset + kept.back().length;
    if (!touches) kept.push_back(std::move(edit));
  }
  return kept;
}

void MendFile(const Session& session, const std::string& file, std::u16string_view text,
              const std::vector<check::Edit>& edits) {
  const auto bytes = ReadWholeFile(PathOf(file));
  if (!bytes) throw FileFailed(bytes.error());
  const auto encoding = RecognizeEncoding(*bytes, kLibraryEncoding);
  const auto mark = MarkLength(encoding);
  // Bytes that no character stands for, or that somebody has changed, would be lost.
  const auto same = EncodeText(text, encoding);
  if (!same || std::string_view(*bytes).substr(mark) != *same) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        file + ": holds what cannot be written back; it is not mended");
  }
  const auto mended = EncodeText(check::Edited(text, edits), encoding);
  if (!mended) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        file + ": its encoding does not have what would come; it is not mended");
  }
  WriteBytes(session, bytes->substr(0, mark) + *mended, file);
}

}  // namespace declarium::cli
