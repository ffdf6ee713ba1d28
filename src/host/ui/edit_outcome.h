// What became of an edit of a module, for the user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/line_edits.h"

namespace declarium {

struct EditOutcomeTexts {
  std::u16string_view changed;
  std::u16string_view refused;
  std::u16string_view partly;  // the numbers of lines come behind it
  std::u16string_view unknown;
};

// Empty when all is done.
[[nodiscard]] std::u16string OutcomeText(const EditOutcomeTexts& texts,
                                         const std::vector<LineEdit>& edits,
                                         const EditReport& report);

}  // namespace declarium
