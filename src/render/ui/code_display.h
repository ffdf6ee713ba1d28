// The coloured code display.
#pragma once

#include <string_view>

#include "toolkit/colour.h"
#include "toolkit/rich_text.h"

namespace declarium {

// The three colours of the display, shared by the display, the settings and the colour dialog.
struct DisplayColours {
  Colour keyword = 0xFF0000;
  Colour comment = 0x008000;
  Colour normal = 0x000000;

  friend bool operator==(const DisplayColours&, const DisplayColours&) = default;
};

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
