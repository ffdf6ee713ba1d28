#include "library/ui/file_messages.h"

#include "library/file_io.h"
#include "text/user_texts.h"

namespace declarium {
namespace {

void Tell(Toolkit& toolkit, std::u16string_view text) {
  toolkit.ShowMessage({std::u16string(text), MessageButtons::kOk, MessageIcon::kCritical});
}

}  // namespace

std::string ReadFileOrTell(Toolkit& toolkit, const std::filesystem::path& path) {
  auto bytes = ReadWholeFile(path);
  if (bytes) return std::move(*bytes);
  Tell(toolkit, texts::kReadError);
  return {};
}

void WriteFileOrTell(Toolkit& toolkit, const std::filesystem::path& path, std::string_view bytes) {
  if (!WriteWholeFile(path, bytes)) Tell(toolkit, texts::kWriteError);
}

}  // namespace declarium
