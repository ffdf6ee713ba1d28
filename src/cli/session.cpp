#include "cli/session.h"

#include <ostream>

#include "cli/output.h"

#include "library/file_io.h"
#include "text/text.h"

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
    // A file's name may hold anything, and the terminal would obey it.
    streams.err << "declarium-cli: " << OneLine(FromUtf8(message.substr(start, end - start)))
                << '\n';
    start = end == message.npos ? end : end + 1;
  }
}

void Session::SayRecovered(const std::vector<Recovered>& recovered) const {
  for (const auto& [path, in_place] : recovered) {
    Say(PathText(path) + (in_place ? ": an unfinished save had left it without its name; it is back"
                                   : ": an unfinished save left something; declarium-cli history "
                                     "lists it"));
  }
}

CommandFailed FileFailed(const Error& error) {
  return {ExitStatus::kFileFailed, error.Message()};
}

CommandFailed FileFailed(const NotSaved& failure) {
  return {ExitStatus::kFileFailed,
          failure.error.Message() +
              (failure.kept ? "\nWhat could not be written is kept; declarium-cli history lists it."
                            : "")};
}

}  // namespace declarium::cli
