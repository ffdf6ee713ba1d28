// A settings store in memory that records what was asked of it and can fail on demand.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/settings_store.h"

namespace declarium {

class MemoryStore : public SettingsStore {
 public:
  bool CreateKey(std::u16string_view key) override {
    if (fails) return false;
    created.emplace_back(key);
    return true;
  }

  // Puts a value there as another program would have stored it.
  void Put(std::u16string_view key, std::u16string_view name, std::uint32_t type,
           std::string bytes) {
    values_[{std::u16string(key), std::u16string(name)}] = {type, std::move(bytes)};
  }
  // The bytes of a value; empty when there is none.
  [[nodiscard]] std::string Bytes(std::u16string_view key, std::u16string_view name) const {
    return Read(key, name).value_or(RegistryValue{}).bytes;
  }
  // The type's number; 0 when there is no such value.
  [[nodiscard]] std::uint32_t Type(std::u16string_view key, std::u16string_view name) const {
    return Read(key, name).value_or(RegistryValue{}).type;
  }

  bool fails = false;
  std::vector<std::u16string> created = {};       // keys, in order
  std::vector<std::u16string> written = {};       // names, in order
  mutable std::vector<std::u16string> read = {};  // names, in order

 private:
  [[nodiscard]] std::optional<RegistryValue> Read(std::u16string_view key,
                                                  std::u16string_view name) const override {
    read.emplace_back(name);
    const auto found = values_.find({std::u16string(key), std::u16string(name)});
    if (fails || found == values_.end()) return std::nullopt;
    return found->second;
  }

  bool Write(std::u16string_view key, std::u16string_view name,
             const RegistryValue& value) override {
    if (fails) return false;
    written.emplace_back(name);
    Put(key, name, value.type, value.bytes);
    return true;
  }

  std::map<std::pair<std::u16string, std::u16string>, RegistryValue> values_;
};

}  // namespace declarium
