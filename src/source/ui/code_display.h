// The colored code display.
#pragma once

#include <string_view>

#include "source/display_colors.h"
#include "toolkit/rich_text.h"
#include "vb/audience.h"

namespace declarium {

class CodeDisplay {
 public:
  // `colors` are looked at each time a text is shown. Both must outlive the display.
  CodeDisplay(RichText& RTB, const DisplayColors& colors) : RTB_(RTB), colors_(colors) {}

  // Whose keywords are colored from the next text on.
  void SetAudience(vb::Audience audience) { audience_ = audience; }
  // Replaces what is shown by `text`, colored. An empty text leaves the display hidden.
  void PrintFormatText(std::u16string_view text);
  [[nodiscard]] bool IsEmpty() const { return RTB_.Text().empty(); }

 private:
  RichText& RTB_;
  const DisplayColors& colors_;
  vb::Audience audience_ = vb::Audience::kVb6;
};

}  // namespace declarium
