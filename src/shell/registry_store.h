// The settings of the current user in the Windows registry, below HKEY_CURRENT_USER.
#pragma once

#include "shell/settings_store.h"

namespace declarium {

class RegistryStore : public SettingsStore {
 public:
  bool CreateKey(std::u16string_view key) override;

 private:
  [[nodiscard]] std::optional<StoredValue> Read(std::u16string_view key,
                                                std::u16string_view name) const override;
  bool Write(std::u16string_view key, std::u16string_view name, const StoredValue& value) override;
};

}  // namespace declarium
