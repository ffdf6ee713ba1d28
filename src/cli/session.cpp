#include "cli/session.h"

#include <ostream>

namespace declarium::cli {

bool Session::UsesColor() const noexcept {
  switch (color) {
    case ColorUse::kAlways:
      return true;
    case ColorUse::kNever:
      return false;
    case ColorUse::kAuto:
      break;
  }
  return streams.out_is_terminal && !streams.no_color;
}

void Session::Say(std::string_view message) const {
  for (std::size_t start = 0; start != message.npos;) {
    const auto end = message.find('\n', start);
    streams.err << "declarium-cli: " << message.substr(start, end - start) << '\n';
    start = end == message.npos ? end : end + 1;
  }
}

CommandFailed FileFailed(const Error& error) {
  return {ExitStatus::kFileFailed, error.Message()};
}

}  // namespace declarium::cli
