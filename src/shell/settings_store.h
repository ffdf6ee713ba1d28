// Named values below named keys, one set of them per user: the user's part of the Windows registry
// (registry_store.h), or files of the same shape (file_store.h). Keys and names are compared
// without case; "\" separates the levels of a key. No failure is reported: a failed read gives the
// default, and whoever writes may look at the result or not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "win32/registry_value.h"

namespace declarium {

enum class ValueType : std::uint32_t {
  kText = kRegistryText,
  kBinary = kRegistryBinary,
  kInteger = kRegistryNumber,
};

// An empty value, an integer or a text.
using SettingValue = std::variant<std::monostate, std::int32_t, std::u16string>;

// The value as an integer: 0 for an empty one, the nearest integer (halves to even) for the text of
// a number; nullopt for any other text and for numbers beyond 32 bits.
[[nodiscard]] std::optional<std::int32_t> ToInteger(const SettingValue& value);
// The value as text: an integer in decimal digits.
[[nodiscard]] std::u16string ToText(const SettingValue& value);

class SettingsStore {
 public:
  virtual ~SettingsStore();
  SettingsStore() = default;
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  // Creates the key and those above it where they are missing; true when it exists afterwards.
  virtual bool CreateKey(std::u16string_view key) = 0;

  // Writes a value, creating the key first; true on success. An integer is stored as 4 bytes, text
  // as UTF-16 with a terminating zero, binary as the bytes of the text in Windows-1250. A value
  // that cannot be made the type asked for is not written.
  bool SetValue(std::u16string_view key, std::u16string_view name, ValueType type,
                const SettingValue& value);

  // The value, whatever type the reader expects, in the type in which it is stored: text exactly as
  // it was written, also when it was stored without its terminating zero; the bytes of a binary one
  // as text; a value of any other type as an empty one. `default_value` when key or value is
  // missing or cannot be read.
  [[nodiscard]] SettingValue GetValue(std::u16string_view key, std::u16string_view name,
                                      SettingValue default_value) const;

 private:
  [[nodiscard]] virtual std::optional<RegistryValue> Read(std::u16string_view key,
                                                          std::u16string_view name) const = 0;
  // The key exists.
  virtual bool Write(std::u16string_view key, std::u16string_view name,
                     const RegistryValue& value) = 0;
};

}  // namespace declarium
