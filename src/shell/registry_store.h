// The settings of the current user in the registry, below HKEY_CURRENT_USER.
#pragma once

#include "shell/settings_store.h"
#include "win32/registry.h"

namespace declarium {

class RegistryStore : public SettingsStore {
 public:
  // The registry outlives the store.
  explicit RegistryStore(Registry& registry) : registry_(registry) {}

  bool CreateKey(std::u16string_view key) override;

 private:
  [[nodiscard]] std::optional<RegistryValue> Read(std::u16string_view key,
                                                  std::u16string_view name) const override;
  bool Write(std::u16string_view key, std::u16string_view name,
             const RegistryValue& value) override;

  Registry& registry_;
};

}  // namespace declarium
