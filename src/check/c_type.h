// What a parameter or member is, by the name of its type in C.
#pragma once

#include <string_view>

namespace declarium::check {

enum class CType : unsigned char {
  kUnknown,
  kShort,     // 8 or 16 bits
  kNumber,    // 32 bits
  kBool,      // 32 bits, true or false
  kHandle,    // as wide as an address
  kWide,      // a number as wide as an address, which may carry one
  kText,      // the address of ANSI text
  kWideText,  // the address of UTF-16
  kAddress,   // any other
};

// The one place where such a name is read.
[[nodiscard]] CType CTypeOf(std::string_view c_type);

// Whether it takes 8 bytes in 64 bits.
[[nodiscard]] constexpr bool GrowsIn64Bits(CType type) noexcept {
  return type == CType::kHandle || type == CType::kWide || type == CType::kText ||
         type == CType::kWideText || type == CType::kAddress;
}

}  // namespace declarium::check
