// The system registry as registration and diagnosis see it. Keys are written with "\" and without a
// leading one; names and keys ignore case. The default value of a key has the empty name.
#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace declarium {

enum class RegistryRoot { kCurrentUser, kLocalMachine, kUsers };

// Programs of 32 and 64 bits see different keys below Classes\CLSID.
enum class RegistryView { kOwn, k32Bit, k64Bit };

using RegistryData = std::variant<std::u16string, std::uint32_t>;

struct RegistryError {
  RegistryRoot root;
  std::u16string key;
  std::uint32_t code;  // as the system reported it
};

class Registry {
 public:
  virtual ~Registry() = default;
  // No value when it is absent, unreadable or neither text nor a 32-bit number.
  [[nodiscard]] virtual std::optional<RegistryData> Read(RegistryRoot root, std::u16string_view key,
                                                         std::u16string_view name,
                                                         RegistryView view) const = 0;
  // The names of the keys directly below `key`; none when it is absent.
  [[nodiscard]] virtual std::vector<std::u16string> SubKeys(RegistryRoot root,
                                                            std::u16string_view key) const = 0;
  // Creates the key where it is missing.
  [[nodiscard]] virtual std::expected<void, RegistryError> Write(RegistryRoot root,
                                                                 std::u16string_view key,
                                                                 std::u16string_view name,
                                                                 const RegistryData& data) = 0;
  // Removes the key and everything below it; an absent key is fine.
  [[nodiscard]] virtual std::expected<void, RegistryError> DeleteTree(RegistryRoot root,
                                                                      std::u16string_view key) = 0;
  // Removes the key when it holds neither values nor keys.
  virtual void DeleteIfEmpty(RegistryRoot root, std::u16string_view key) = 0;
};

}  // namespace declarium
