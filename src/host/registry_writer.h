// Several values written to the registry as one step.
#pragma once

#include <expected>
#include <optional>
#include <string_view>

#include "win32/registry.h"

namespace declarium {

// Writes values until one fails and keeps that failure.
class RegistryWriter {
 public:
  explicit RegistryWriter(Registry& registry) : registry_(registry) {}

  void Write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
             const RegistryValue& value, RegistryView view = RegistryView::kOwn) {
    if (result_) result_ = registry_.Write(root, key, name, value, view);
  }
  // Leaves a number that is there already.
  void WriteNumberOnce(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                       std::uint32_t number) {
    const auto value = registry_.Read(root, key, name);
    if (!value || !NumberOf(*value)) Write(root, key, name, NumberValue(number));
  }
  [[nodiscard]] std::expected<void, RegistryError> Result() const { return result_; }

 private:
  Registry& registry_;
  std::expected<void, RegistryError> result_;
};

}  // namespace declarium
