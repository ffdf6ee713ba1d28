// The system registry itself.
#pragma once

#include "win32/registry.h"

namespace declarium::win32 {

class SystemRegistry final : public Registry {
 public:
  [[nodiscard]] std::optional<RegistryValue> Read(
      RegistryRoot root, std::u16string_view key, std::u16string_view name,
      RegistryView view = RegistryView::kOwn) const override;
  [[nodiscard]] std::vector<std::u16string> SubKeys(RegistryRoot root,
                                                    std::u16string_view key) const override;
  [[nodiscard]] std::u16string Expand(std::u16string_view text) const override;
  [[nodiscard]] std::expected<void, RegistryError> CreateKey(RegistryRoot root,
                                                             std::u16string_view key) override;
  [[nodiscard]] std::expected<void, RegistryError> Write(
      RegistryRoot root, std::u16string_view key, std::u16string_view name,
      const RegistryValue& value, RegistryView view = RegistryView::kOwn) override;
  [[nodiscard]] std::expected<void, RegistryError> DeleteTree(
      RegistryRoot root, std::u16string_view key, RegistryView view = RegistryView::kOwn) override;
  void DeleteIfEmpty(RegistryRoot root, std::u16string_view key,
                     RegistryView view = RegistryView::kOwn) override;
};

}  // namespace declarium::win32
