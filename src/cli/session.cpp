#include "cli/session.h"

#include <ostream>

namespace declarium::cli {

bool Session::UsesColour() const noexcept {
  switch (colour) {
    case ColourUse::kAlways:
      return true;
    case ColourUse::kNever:
      return false;
    case ColourUse::kAuto:
      break;
  }
  return streams.out_is_terminal && !streams.no_colour;
}

void Session::Say(std::string_view message) const {
  streams.err << "declarium-cli: " << message << '\n';
}

CommandFailed FileFailed(const Error& error) {
  return {ExitStatus::kFileFailed, error.Message()};
}

}  // namespace declarium::cli
