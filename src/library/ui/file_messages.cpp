#include "library/ui/file_messages.h"

#include "library/file_io.h"
#include "text/text.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

void Tell(Toolkit& toolkit, std::u16string_view text) {
  toolkit.ShowMessage({std::u16string(text), MessageButtons::kOk, MessageIcon::kCritical});
}

void TellAbout(Toolkit& toolkit, std::u16string_view text, std::string_view what) {
  toolkit.ShowMessage({std::u16string(text) + u"\r\n\r\n" + FromUtf8(what), MessageButtons::kOk,
                       MessageIcon::kExclamation});
}

}  // namespace

StampedBytes ReadStampedOrTell(Toolkit& toolkit, const std::filesystem::path& path) {
  auto read = ReadStamped(path);
  if (read) return *std::move(read);
  Tell(toolkit, texts::kReadError);
  return {};
}

std::string ReadFileOrTell(Toolkit& toolkit, const std::filesystem::path& path) {
  return ReadStampedOrTell(toolkit, path).bytes;
}

bool TellSaved(Toolkit& toolkit, const std::expected<Saved, NotSaved>& saved) {
  if (saved) {
    if (saved->not_kept) TellAbout(toolkit, texts::kOldNotKept, saved->not_kept->Message());
    return true;
  }
  Tell(toolkit, texts::kWriteError);
  const auto& [error, kept] = saved.error();
  if (error.kind == ErrorKind::kCannotKeep) TellAbout(toolkit, texts::kCannotKeep, error.context);
  if (kept) Tell(toolkit, texts::kChangesKept);
  return false;
}

void WriteFileOrTell(Toolkit& toolkit, FileSaver& saver, const std::filesystem::path& path,
                     std::string_view bytes) {
  TellSaved(toolkit, saver.Save(path, bytes));
}

void TellNotWhole(Toolkit& toolkit) {
  Tell(toolkit, texts::kWriteError);
}

void TellRecovered(Toolkit& toolkit, const std::vector<Recovered>& recovered) {
  for (const auto& [path, in_place] : recovered) {
    TellAbout(toolkit, in_place ? texts::kPutBack : texts::kLeftOver, PathText(path));
  }
}

}  // namespace declarium
