#include "cli/mending.h"

#include <algorithm>

#include "cli/library_files.h"

#include "library/file_io.h"
#include "text/encoding.h"

namespace declarium::cli {

std::vector<Edit> WithoutOverlaps(std::vector<Edit> edits) {
  std::ranges::stable_sort(edits, {}, &Edit::offset);
  std::vector<Edit> kept;
  for (auto& edit : edits) {
    const bool touches = !kept.empty() && edit.offset <= kept.back().offset + kept.back().length;
    if (!touches) kept.push_back(std::move(edit));
  }
  return kept;
}

std::string BytesWith(const std::string& file, std::u16string_view text, std::u16string_view now,
                      const Encoding& otherwise) {
  const auto bytes = ReadWholeFile(PathOf(file));
  if (!bytes) throw FileFailed(bytes.error());
  const auto encoding = RecognizeEncoding(*bytes, otherwise);
  const auto mark = MarkLength(encoding);
  // Bytes that no character stands for, or that somebody has changed, would be lost.
  const auto same = EncodeText(text, encoding);
  if (!same || std::string_view(*bytes).substr(mark) != *same) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        file + ": holds what cannot be written back; it is not changed");
  }
  const auto mended = EncodeText(now, encoding);
  if (!mended) {
    throw CommandFailed(ExitStatus::kFileFailed,
                        file + ": its encoding does not have what would come; it is not changed");
  }
  return bytes->substr(0, mark) + *mended;
}

void MendFile(const Session& session, const std::string& file, std::u16string_view text,
              const std::vector<Edit>& edits, const Encoding& otherwise) {
  WriteBytes(session, BytesWith(file, text, Edited(text, edits), otherwise), file);
}

}  // namespace declarium::cli
