// The text of the whole basket.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "library/grouped_entry.h"
#include "library/library.h"

namespace declarium {

inline constexpr std::u16string_view kPrivate = u"Private";
inline constexpr std::u16string_view kPublic = u"Public";

// Item key: kind digit, character 0, name. A record element is a key, another character 0 and the
// item string.
[[nodiscard]] std::u16string ItemKey(int kind_code, std::u16string_view name);

// What the basket's record holds for an entry: the first element that begins with the entry's key,
// so a longer name added earlier can answer for a shorter one. Nothing when there is none, and for
// an entry without a kind's icon. The views refer into `record`.
[[nodiscard]] std::optional<ItemView> FindRecorded(const GroupedEntry& entry,
                                                   std::span<const std::u16string> record);

// Renders the listed `entries` in their order with `scope` in front of every declaration, each from
// what FindRecorded gives for it; an entry that is not recorded is left out.
// Consts and Declares are one line each, every Type stands behind an empty line unless it is first,
// and the text ends with exactly one CR LF; an empty basket gives one CR LF.
[[nodiscard]] std::u16string CreateSelect(std::span<const GroupedEntry> entries,
                                          std::span<const std::u16string> record,
                                          std::u16string_view scope);

}  // namespace declarium
