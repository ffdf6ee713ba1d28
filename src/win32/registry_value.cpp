#include "win32/registry_value.h"

#include <utility>

namespace declarium {

namespace {

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

}  // namespace

RegistryValue TextValue(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) AppendLittleEndian(unit, 2, bytes);
  AppendLittleEndian(0, 2, bytes);
  return {kRegistryText, std::move(bytes)};
}

RegistryValue NumberValue(std::uint32_t number) {
  std::string bytes;
  AppendLittleEndian(number, 4, bytes);
  return {kRegistryNumber, std::move(bytes)};
}

std::u16string TextOf(const RegistryValue& value) {
  std::u16string text;
  for (std::string_view bytes = value.bytes; bytes.size() >= 2; bytes.remove_prefix(2)) {
    text += static_cast<char16_t>(LittleEndian(bytes.substr(0, 2)));
  }
  if (text.ends_with(u'\0')) text.pop_back();
  return text;
}

std::optional<std::uint32_t> NumberOf(const RegistryValue& value) {
  if (value.type != kRegistryNumber || value.bytes.size() != 4) return std::nullopt;
  return LittleEndian(value.bytes);
}

}  // namespace declarium
