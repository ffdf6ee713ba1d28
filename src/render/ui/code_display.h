// The coloured code display.
#pragma once

#include <string_view>

#include "render/display_colours.h"
#include "toolkit/rich_text.h"

namespace declarium {

class CodeDisplay {
 public:
  // `colours` are looked at each time a text is shown. Both must outlive the display.
  CodeDisplay(RichText& RTB, const DisplayColours& colours) : RTB_(RTB), colours_(colours) {}

  // Replaces what is shown by `text`, coloured. An empty text leaves the display hidden.
  void PrintFormatText(std::u16string_view text);

 private:
  RichText& RTB_;
  const DisplayColours& colours_;
};

}  // namespace declarium
