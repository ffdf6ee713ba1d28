#include "text/edit.h"

namespace declarium {

std::u16string Edited(std::u16string_view text, const std::vector<Edit>& edits, std::size_t start) {
  std::u16string edited;
  std::size_t position = 0;
  for (const auto& edit : edits) {
    edited += text.substr(position, edit.offset - start - position);
    edited += edit.text;
    position = edit.offset - start + edit.length;
  }
  edited += text.substr(position);
  return edited;
}

}  // namespace declarium
