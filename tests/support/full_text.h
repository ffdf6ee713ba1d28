// The text that the full-text criterion of the advanced search is matched with, made slowly.
#pragma once

#include <string>
#include <string_view>

#include "text/text.h"

namespace declarium {

inline std::u16string NormalizeFullText(std::u16string_view text) {
  auto plain = u" " + LowerCase(Trim(text)) + u" ";
  for (const std::u16string_view unit : {u".", u",", u"(", u")", u"'"})
    plain = Replace(plain, unit, u" ");
  return plain;
}

}  // namespace declarium
