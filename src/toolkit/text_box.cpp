#include "toolkit/text_box.h"

namespace declarium {

void TextBox::SetText(std::u16string_view text) {
  if (Text() == text) return;
  ShowText(text);
  on_change.Raise();
}

}  // namespace declarium
