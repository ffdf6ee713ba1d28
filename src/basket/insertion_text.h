// The text of the whole basket.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "library/grouped_entry.h"

namespace declarium {

inline constexpr std::u16string_view kPrivate = u"Private";
inline constexpr std::u16string_view kPublic = u"Public";

// Renders the listed `entries` in their order with `scope` in front of every declaration, each from
// what RecordedItems finds for it; an entry that is not recorded is left out.
// Consts and Declares are one line each, every Type stands behind an empty line unless it is first,
// and the text ends with exactly one CR LF; an empty basket gives one CR LF.
[[nodiscard]] std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                                          std::span<const std::u16string> record,
                                          std::u16string_view scope);

}  // namespace declarium
