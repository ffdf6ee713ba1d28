// Finding items of a library by a name that a person wrote: "RECT", or "type:RECT" with the kind.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "library/library.h"

namespace declarium {

// The kind of the word const, declare or type in any case.
[[nodiscard]] std::optional<Kind> KindOfWord(std::u16string_view word);

struct SoughtName {
  std::span<const Kind> kinds = kKinds;  // where to look, in this order
  std::u16string name;

  [[nodiscard]] bool NamesKind() const { return kinds.size() == 1; }
};

// What stands in front of a colon counts only when it is a kind.
[[nodiscard]] SoughtName ReadSoughtName(std::u16string_view text);

// Where an item stands in its library.
struct ItemPlace {
  Kind kind;
  std::size_t position;  // 0-based, in the lists of the kind

  friend auto operator<=>(const ItemPlace&, const ItemPlace&) = default;
};

// The one item that is spelled as sought, among the constants, then the declarations, then the
// records. When none is, one of every other spelling in the first kind that has any.
[[nodiscard]] std::vector<ItemPlace> FindSought(const Library& library, const SoughtName& sought);

}  // namespace declarium
