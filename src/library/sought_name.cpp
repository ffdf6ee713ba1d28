#include "library/sought_name.h"

#include <algorithm>

#include "library/find_item_index.h"
#include "text/text.h"

namespace declarium {

std::optional<Kind> KindOfWord(std::u16string_view word) {
  const auto found = std::ranges::find_if(
      kKinds, [&](Kind kind) { return EqualIgnoringCase(KindName(kind), word); });
  if (found == kKinds.end()) return std::nullopt;
  return *found;
}

SoughtName ReadSoughtName(std::u16string_view text) {
  if (const auto colon = text.find(u':'); colon != text.npos) {
    if (const auto kind = KindOfWord(text.substr(0, colon))) {
      const auto position = static_cast<std::size_t>(KindCode(*kind));
      return {std::span(kKinds).subspan(position, 1), std::u16string(text.substr(colon + 1))};
    }
  }
  return {kKinds, std::u16string(text)};
}

std::vector<ItemPlace> FindSought(const Library& library, const SoughtName& sought) {
  std::vector<ItemPlace> others;
  for (const auto kind : sought.kinds) {
    const auto& names = library[kind].names;
    const auto [first, last] = FindSpellings(sought.name, names);
    for (auto position = first; position < last; ++position) {
      if (names[position] == sought.name) return {{kind, position}};
    }
    if (!others.empty()) continue;
    for (auto position = first; position < last; ++position) {
      if (position == first || names[position] != names[position - 1]) {
        others.push_back({kind, position});
      }
    }
  }
  return others;
}

}  // namespace declarium
