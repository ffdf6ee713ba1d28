// The setting FindCheckBox: the values of the search dialog's ten check boxes, one digit each, the
// first being Check1's.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace declarium {

inline constexpr std::size_t kFindCheckBoxCount = 10;

// 0 off, 1 on, 2 grayed, which counts as off.
using FindCheckBoxes = std::array<int, kFindCheckBoxCount>;

// What the boxes show when nothing is stored.
inline constexpr FindCheckBoxes kDefaultFindCheckBoxes = {1, 1, 1, 0, 1, 1, 1, 0, 1, 1};

// A position that is missing or no digit from 0 to 2 has its default; what is behind the tenth is
// ignored.
[[nodiscard]] FindCheckBoxes ReadFindCheckBoxes(std::u16string_view stored);

[[nodiscard]] std::u16string FindCheckBoxText(const FindCheckBoxes& values);

}  // namespace declarium
