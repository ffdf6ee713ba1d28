// The text of the whole basket.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "render/grouped_entry.h"

namespace declarium {

inline constexpr std::u16string_view kPrivate = u"Private";
inline constexpr std::u16string_view kPublic = u"Public";

// Item key: kind digit, character 0, name. A record element is a key, another character 0 and the
// item string.
[[nodiscard]] std::u16string ItemKey(int kind_code, std::u16string_view name);

// Renders the listed `entries` in their order with `scope` in front of every declaration. An
// entry's item string comes from the first element of `record` that begins with its key, so a
// longer name added earlier can answer for a shorter one; an entry without such an element is left
// out. Consts and Declares are one line each, every Type stands behind an empty line unless it is
// first, and the text ends with exactly one CR LF; an empty basket gives one CR LF.
[[nodiscard]] std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                                          std::span<const std::u16string> record,
                                          std::u16string_view scope);

}  // namespace declarium
