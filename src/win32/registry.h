// The system registry as the rules see it, on every system: registration, diagnosis and settings
// stand on it, and tests put one in memory in its place. Keys are written with "\" and without a
// leading one; names and keys ignore case. The default value of a key has the empty name.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "win32/registry_value.h"

namespace declarium {

enum class RegistryRoot { kCurrentUser, kLocalMachine, kUsers };

// Programs of 32 and 64 bits see different keys below Classes\CLSID.
enum class RegistryView { kOwn, k32Bit, k64Bit };

struct RegistryError {
  RegistryRoot root;
  std::u16string key;
  std::uint32_t code;  // as the system reported it
};

class Registry {
 public:
  virtual ~Registry() = default;
  // nullopt when the value is absent or unreadable.
  [[nodiscard]] virtual std::optional<RegistryValue> Read(
      RegistryRoot root, std::u16string_view key, std::u16string_view name,
      RegistryView view = RegistryView::kOwn) const = 0;
  // The names of the keys directly below `key`; none when it is absent.
  [[nodiscard]] virtual std::vector<std::u16string> SubKeys(RegistryRoot root,
                                                            std::u16string_view key) const = 0;
  // The text with the environment's values in place of the names between percent signs.
  [[nodiscard]] virtual std::u16string Expand(std::u16string_view text) const = 0;
  // Creates the key and those above it where they are missing.
  [[nodiscard]] virtual std::expected<void, RegistryError> CreateKey(RegistryRoot root,
                                                                     std::u16string_view key) = 0;
  // Creates the key where it is missing.
  [[nodiscard]] virtual std::expected<void, RegistryError> Write(
      RegistryRoot root, std::u16string_view key, std::u16string_view name,
      const RegistryValue& value, RegistryView view = RegistryView::kOwn) = 0;
  // Removes the key and everything below it; an absent key is fine.
  [[nodiscard]] virtual std::expected<void, RegistryError> DeleteTree(
      RegistryRoot root, std::u16string_view key, RegistryView view = RegistryView::kOwn) = 0;
  // Removes the key when it holds neither values nor keys.
  virtual void DeleteIfEmpty(RegistryRoot root, std::u16string_view key,
                             RegistryView view = RegistryView::kOwn) = 0;
};

}  // namespace declarium
