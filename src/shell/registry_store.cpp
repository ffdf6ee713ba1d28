#include "shell/registry_store.h"

namespace declarium {

bool RegistryStore::CreateKey(std::u16string_view key) {
  return registry_.CreateKey(RegistryRoot::kCurrentUser, key).has_value();
}

std::optional<RegistryValue> RegistryStore::Read(std::u16string_view key,
                                                 std::u16string_view name) const {
  return registry_.Read(RegistryRoot::kCurrentUser, key, name);
}

bool RegistryStore::Write(std::u16string_view key, std::u16string_view name,
                          const RegistryValue& value) {
  return registry_.Write(RegistryRoot::kCurrentUser, key, name, value).has_value();
}

}  // namespace declarium
