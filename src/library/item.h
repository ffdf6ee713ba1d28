// The item string, which packs what follows an item's name:
//   Const     type, character 14, value
//   Declare   character 10 (Sub) or 11 (Function), then everything behind " Lib "
//   Type      rest of the header line, character 12, member lines joined by character 13
// An item string without its separator has an empty second field; a further separator ends the
// second field. The views returned here refer into the item string.
#pragma once

#include <string_view>

namespace declarium {

inline constexpr char16_t kSubMarker = 10;
inline constexpr char16_t kFunctionMarker = 11;
inline constexpr char16_t kMembersSeparator = 12;
inline constexpr char16_t kMemberSeparator = 13;
inline constexpr char16_t kValueSeparator = 14;

struct ConstFields {
  std::u16string_view type;   // what follows "As", empty when the constant has no type
  std::u16string_view value;  // what follows "="
};

struct DeclareFields {
  std::u16string_view marker;  // the one marker character; empty for an empty item string
  std::u16string_view tail;
};

struct TypeFields {
  std::u16string_view header_rest;
  std::u16string_view members;  // joined by character 13
};

namespace internal {

struct TwoFields {
  std::u16string_view first;
  std::u16string_view second;
};

constexpr TwoFields SplitTwo(std::u16string_view item, char16_t separator) noexcept {
  const auto end = item.find(separator);
  if (end == item.npos) return {item, {}};
  const auto second = item.substr(end + 1);
  return {item.substr(0, end), second.substr(0, second.find(separator))};
}

}  // namespace internal

[[nodiscard]] constexpr ConstFields SplitConst(std::u16string_view item) noexcept {
  const auto [type, value] = internal::SplitTwo(item, kValueSeparator);
  return {type, value};
}

[[nodiscard]] constexpr DeclareFields SplitDeclare(std::u16string_view item) noexcept {
  return {item.substr(0, 1), item.empty() ? item : item.substr(1)};
}

[[nodiscard]] constexpr TypeFields SplitType(std::u16string_view item) noexcept {
  const auto [header_rest, members] = internal::SplitTwo(item, kMembersSeparator);
  return {header_rest, members};
}

}  // namespace declarium
