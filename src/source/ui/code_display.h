// The colored code display.
#pragma once

#include <string_view>

#include "source/display_colors.h"
#include "toolkit/rich_text.h"

namespace declarium {

class CodeDisplay {
 public:
  // `colors` are looked at each time a text is shown. Both must outlive the display.
  CodeDisplay(RichText& RTB, const DisplayColors& colors) : RTB_(RTB), colors_(colors) {}

  // Replaces what is shown by `text`, colored. An empty text leaves the display hidden.
  void PrintFormatText(std::u16string_view text);

 private:
  RichText& RTB_;
  const DisplayColors& colors_;
};

}  // namespace declarium
