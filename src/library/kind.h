// The three kinds of items. A kind's code is the row of the kind selector and the digit in a basket
// entry; its icon number in the shared-items list, the basket and the search results is code + 1.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace declarium {

enum class Kind : int { kConst = 0, kDeclare = 1, kType = 2 };

inline constexpr std::size_t kKindCount = 3;
inline constexpr std::array<Kind, kKindCount> kKinds = {Kind::kConst, Kind::kDeclare, Kind::kType};

[[nodiscard]] constexpr int KindCode(Kind kind) noexcept {
  return static_cast<int>(kind);
}
[[nodiscard]] constexpr int IconOf(Kind kind) noexcept {
  return KindCode(kind) + 1;
}

// The kind of a selector row or kind code; none for any other number.
[[nodiscard]] constexpr std::optional<Kind> KindOfCode(int code) noexcept {
  if (code < 0 || code >= static_cast<int>(kKindCount)) return std::nullopt;
  return static_cast<Kind>(code);
}
[[nodiscard]] constexpr std::optional<Kind> KindOfIcon(int icon) noexcept {
  return KindOfCode(icon - 1);
}

// The kind selector's row texts, which also name the groups of the basket.
[[nodiscard]] constexpr std::u16string_view KindName(Kind kind) noexcept {
  constexpr std::array<std::u16string_view, kKindCount> kNames = {u"Const", u"Declare", u"Type"};
  return kNames[static_cast<std::size_t>(kind)];
}

}  // namespace declarium
