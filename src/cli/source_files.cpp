#include "cli/source_files.h"

#include <istream>

#include "cli/library_files.h"

namespace declarium::cli {
namespace {

std::string ReadStandardInput(std::istream& in) {
  constexpr std::size_t kBlock = 1 << 16;
  std::string bytes;
  while (in) {
    const auto size = bytes.size();
    bytes.resize(size + kBlock);
    in.read(bytes.data() + size, kBlock);
    bytes.resize(size + static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad()) throw CommandFailed(ExitStatus::kFileFailed, "standard input: cannot be read");
  return bytes;
}

}  // namespace

std::string SourceName(const std::string& source) {
  return source == "-" ? "standard input" : source;
}

FileView ViewSource(const std::string& source, const Session& session) {
  if (source == "-") return ViewOf(ReadStandardInput(session.streams.in));
  auto view = ViewFile(PathOf(source));
  if (!view) throw FileFailed(view.error());
  return *std::move(view);
}

}  // namespace declarium::cli
