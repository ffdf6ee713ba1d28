// A registry in memory. Values are named "HKCU\key|value".
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "text/text.h"
#include "win32/registry.h"

namespace declarium {

class FakeRegistry final : public Registry {
 public:
  std::map<std::u16string, RegistryValue> values;
  std::map<std::u16string, RegistryValue> wide_values;  // in the 64-bit view in place of those
  std::vector<std::u16string> emptied;                  // keys that DeleteIfEmpty removed
  std::optional<RegistryRoot> read_only_root;
  std::optional<RegistryView> hidden_view;  // has no class

  [[nodiscard]] std::u16string Text(const std::u16string& name) const {
    const auto found = values.find(name);
    return found == values.end() ? u"(absent)" : TextOf(found->second);
  }
  [[nodiscard]] std::uint32_t Number(const std::u16string& name) const {
    return NumberOf(values.at(name)).value();
  }

  std::optional<RegistryValue> Read(RegistryRoot root, std::u16string_view key,
                                    std::u16string_view name,
                                    RegistryView view = RegistryView::kOwn) const override {
    if (view == hidden_view) return std::nullopt;
    const auto full_name = KeyName(root, key) + u"|" + std::u16string(name);
    if (view == RegistryView::k64Bit && wide_values.contains(full_name)) {
      return wide_values.at(full_name);
    }
    const auto found = values.find(full_name);
    if (found == values.end()) return std::nullopt;
    return found->second;
  }
  std::vector<std::u16string> SubKeys(RegistryRoot root, std::u16string_view key) const override {
    const std::u16string prefix = KeyName(root, key);
    std::vector<std::u16string> names;
    for (const auto& [name, data] : values) {
      if (!name.starts_with(prefix)) continue;
      const auto rest = name.substr(prefix.size());
      const auto sub_key = rest.substr(0, rest.find_first_of(u"\\|"));
      if (names.empty() || names.back() != sub_key) names.push_back(sub_key);
    }
    return names;
  }
  // %PROGRAMS% is the only variable.
  std::u16string Expand(std::u16string_view text) const override {
    return Replace(text, u"%PROGRAMS%", u"C:\\Program Files");
  }
  std::expected<void, RegistryError> CreateKey(RegistryRoot, std::u16string_view) override {
    return {};
  }
  std::expected<void, RegistryError> Write(RegistryRoot root, std::u16string_view key,
                                           std::u16string_view name, const RegistryValue& value,
                                           RegistryView view = RegistryView::kOwn) override {
    if (root == read_only_root) return std::unexpected(RegistryError{root, std::u16string(key), 5});
    In(view)[KeyName(root, key) + u"|" + std::u16string(name)] = value;
    return {};
  }
  std::expected<void, RegistryError> DeleteTree(RegistryRoot root, std::u16string_view key,
                                                RegistryView view = RegistryView::kOwn) override {
    std::erase_if(In(view),
                  [&](const auto& value) { return IsIn(value.first, KeyName(root, key)); });
    return {};
  }
  void DeleteIfEmpty(RegistryRoot root, std::u16string_view key,
                     RegistryView view = RegistryView::kOwn) override {
    const auto name = KeyName(root, key);
    for (const auto& value : In(view)) {
      if (IsIn(value.first, name)) return;
    }
    emptied.push_back(name);
  }

 private:
  // What is written to the 64-bit view is in that one alone.
  std::map<std::u16string, RegistryValue>& In(RegistryView view) {
    return view == RegistryView::k64Bit ? wide_values : values;
  }
  static std::u16string KeyName(RegistryRoot root, std::u16string_view key) {
    const char16_t* names[] = {u"HKCU\\", u"HKLM\\", u"HKU\\"};
    return names[static_cast<int>(root)] + std::u16string(key);
  }
  static bool IsIn(std::u16string_view value, std::u16string_view key) {
    return value.starts_with(key) && value.size() > key.size() &&
           (value[key.size()] == u'\\' || value[key.size()] == u'|');
  }
};

}  // namespace declarium
