#include "cli/status_line.h"

#include <ostream>

#include "cli/output.h"

#include "text/text.h"

namespace declarium::cli {
namespace {

constexpr std::string_view kClearLine = "\r\x1B[K";

}  // namespace

void StatusLine::Show(std::string_view text) {
  if (!streams_.err_is_terminal) return;
  streams_.err << kClearLine << OneLine(FromUtf8(text)) << std::flush;
  shown_ = true;
}

void StatusLine::Clear() {
  if (!shown_) return;
  streams_.err << kClearLine << std::flush;
  shown_ = false;
}

}  // namespace declarium::cli
