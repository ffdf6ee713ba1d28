// The systems that declarations are read for.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace declarium::vb {

enum class Target : std::uint8_t {
  kVb6,      // Visual Basic 6.0, 32-bit
  kVba7x32,  // Office 2010 and later
  kVba7x64,
  kTwinBasic,  // 64-bit
};

[[nodiscard]] constexpr bool Is64Bit(Target target) {
  return target == Target::kVba7x64 || target == Target::kTwinBasic;
}
[[nodiscard]] constexpr long PointerBytes(Target target) {
  return Is64Bit(target) ? 8 : 4;
}

// What a constant of conditional compilation that the system defines is: 0 or -1. Nothing for a
// name that only a project can define.
[[nodiscard]] std::optional<int> CompilerConstantOf(Target target, std::u16string_view name);

}  // namespace declarium::vb
