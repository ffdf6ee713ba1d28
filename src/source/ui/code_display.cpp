#include "source/ui/code_display.h"

#include "source/format_text.h"

namespace declarium {
namespace {

Color ColorOf(TextColor color, const DisplayColors& colors) {
  switch (color) {
    case TextColor::kKeyword:
      return colors.keyword;
    case TextColor::kComment:
      return colors.comment;
    case TextColor::kNormal:
      break;
  }
  return colors.normal;
}

}  // namespace

void CodeDisplay::PrintFormatText(std::u16string_view text) {
  RTB_.SetVisible(false);
  RTB_.Clear();
  if (text.empty()) return;
  for (const auto& run : FormatText(text, audience_)) {
    RTB_.SetInsertionColor(ColorOf(run.color, colors_));
    RTB_.Insert(run.text);
  }
  RTB_.SetCaretToStart();
  RTB_.SetVisible(true);
}

}  // namespace declarium
