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

void AppendLittleEndian(std::uint32_t number, int count, std::string& bytes) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return number;
}

std::string EncodeInteger(std::int32_t value) {
  std::string bytes;
  AppendLittleEndian(static_cast<std::uint32_t>(value), 4, bytes);
  return bytes;
}

std::string EncodeText(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) AppendLittleEndian(unit, 2, bytes);
  AppendLittleEndian(0, 2, bytes);
  return bytes;
}

// Text is stored with and without a terminating zero, by different writers.
std::u16string DecodeText(std::string_view bytes) {
  std::u16string text;
  for (; bytes.size() >= 2; bytes.remove_prefix(2)) {
    text += static_cast<char16_t>(LittleEndian(bytes.substr(0, 2)));
  }
  if (text.ends_with(u'\0')) text.pop_back();
  return text;
}

std::optional<std::string> Encode(ValueType type, const SettingValue& value) {
  switch (type) {
    case ValueType::kInteger:
      return ToInteger(value).transform(EncodeInteger);
    case ValueType::kText:
      return EncodeText(ToText(value));
    case ValueType::kBinary:
      return EncodeCodePage(ToText(value));
  }
  return std::nullopt;
}

SettingValue Decode(std::uint32_t type, std::string_view bytes) {
  switch (static_cast<ValueType>(type)) {
    case ValueType::kInteger:
      if (bytes.size() != 4) return {};
      return static_cast<std::int32_t>(LittleEndian(bytes));
    case ValueType::kText:
      return DecodeText(bytes);
    case ValueType::kBinary:
      return DecodeCodePage(bytes);
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
  const std::optional<std::string> bytes = Encode(type, value);
  return exists && bytes && Write(key, name, {static_cast<std::uint32_t>(type), *bytes});
}

SettingValue SettingsStore::GetValue(std::u16string_view key, std::u16string_view name,
                                     SettingValue default_value) const {
  const std::optional<StoredValue> stored = Read(key, name);
  if (!stored) return default_value;
  return Decode(stored->type, stored->bytes);
}

}  // namespace declarium
