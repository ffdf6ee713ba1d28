// Values as the registry stores them: a type's number and the bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace declarium {

// The numbers are the registry's.
inline constexpr std::uint32_t kRegistryText = 1;            // REG_SZ
inline constexpr std::uint32_t kRegistryExpandableText = 2;  // REG_EXPAND_SZ
inline constexpr std::uint32_t kRegistryBinary = 3;          // REG_BINARY
inline constexpr std::uint32_t kRegistryNumber = 4;          // REG_DWORD

struct RegistryValue {
  std::uint32_t type = 0;
  std::string bytes;

  friend bool operator==(const RegistryValue&, const RegistryValue&) = default;
};

// Text with a terminating zero.
[[nodiscard]] RegistryValue TextValue(std::u16string_view text);
[[nodiscard]] RegistryValue NumberValue(std::uint32_t number);

// The text in a value's bytes, whatever its type. Writers differ in whether they store the
// terminating zero, so one zero at the end does not belong to the text.
[[nodiscard]] std::u16string TextOf(const RegistryValue& value);
// nullopt when the value is no number of 32 bits.
[[nodiscard]] std::optional<std::uint32_t> NumberOf(const RegistryValue& value);

}  // namespace declarium
