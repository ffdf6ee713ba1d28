#include "shell/settings_store.h"

#include <cmath>
#include <limits>
#include <utility>

#include "text/code_page.h"
#include "text/text.h"
#include "vb/number.h"

namespace declarium {

namespace {

std::optional<std::int32_t> IntegerOf(std::u16string_view text) {
  const std::u16string_view number = Trim(text);
  if (!IsOwnNumberText(number)) return std::nullopt;
  const double value = std::nearbyint(Val(number).value());
  using Limits = std::numeric_limits<std::int32_t>;
  if (value < Limits::min() || value > Limits::max()) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

std::optional<RegistryValue> Encode(ValueType type, const SettingValue& value) {
  switch (type) {
    case ValueType::kInteger:
      return ToInteger(value).transform(
          [](std::int32_t number) { return NumberValue(static_cast<std::uint32_t>(number)); });
    case ValueType::kText:
      return TextValue(ToText(value));
    case ValueType::kBinary:
      return RegistryValue{static_cast<std::uint32_t>(type), EncodeCodePage(ToText(value))};
  }
  return std::nullopt;
}

SettingValue Decode(const RegistryValue& value) {
  switch (static_cast<ValueType>(value.type)) {
    case ValueType::kInteger:
      if (const auto number = NumberOf(value)) return static_cast<std::int32_t>(*number);
      return {};
    case ValueType::kText:
      return TextOf(value);
    case ValueType::kBinary:
      return DecodeCodePage(value.bytes);
  }
  return {};
}

}  // namespace

std::optional<std::int32_t> ToInteger(const SettingValue& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return IntegerOf(*text);
  const auto* integer = std::get_if<std::int32_t>(&value);
  return integer ? *integer : 0;
}

std::u16string ToText(const SettingValue& value) {
  if (const auto* integer = std::get_if<std::int32_t>(&value)) return NumberText(*integer);
  const auto* text = std::get_if<std::u16string>(&value);
  return text ? *text : std::u16string();
}

SettingsStore::~SettingsStore() = default;

bool SettingsStore::SetValue(std::u16string_view key, std::u16string_view name, ValueType type,
                             const SettingValue& value) {
  const bool exists = CreateKey(key);
  const auto encoded = Encode(type, value);
  return exists && encoded && Write(key, name, *encoded);
}

SettingValue SettingsStore::GetValue(std::u16string_view key, std::u16string_view name,
                                     SettingValue default_value) const {
  const auto stored = Read(key, name);
  return stored ? Decode(*stored) : std::move(default_value);
}

}  // namespace declarium
