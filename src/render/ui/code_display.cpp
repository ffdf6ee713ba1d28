#include "render/ui/code_display.h"

#include "render/format_text.h"

namespace declarium {
namespace {

Colour ColourOf(TextColour colour, const DisplayColours& colours) {
  switch (colour) {
    case TextColour::kKeyword:
      return colours.keyword;
    case TextColour::kComment:
      return colours.comment;
    case TextColour::kNormal:
      break;
  }
  return colours.normal;
}

}  // namespace

void CodeDisplay::PrintFormatText(std::u16string_view text) {
  RTB_.SetVisible(false);
  RTB_.Clear();
  if (text.empty()) return;
  for (const auto& run : FormatText(text)) {
    RTB_.SetInsertionColour(ColourOf(run.colour, colours_));
    RTB_.Insert(run.text);
  }
  RTB_.SetCaretToStart();
  RTB_.SetVisible(true);
}

}  // namespace declarium
