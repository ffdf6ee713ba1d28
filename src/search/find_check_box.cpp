#include "search/find_check_box.h"

#include <algorithm>

namespace declarium {

FindCheckBoxes ReadFindCheckBoxes(std::u16string_view stored) {
  auto values = kDefaultFindCheckBoxes;
  for (std::size_t i = 0; i < std::min(stored.size(), values.size()); ++i) {
    if (stored[i] >= u'0' && stored[i] <= u'2') values[i] = stored[i] - u'0';
  }
  return values;
}

std::u16string FindCheckBoxText(const FindCheckBoxes& values) {
  std::u16string text;
  for (const int value : values) text += static_cast<char16_t>(u'0' + value);
  return text;
}

}  // namespace declarium
