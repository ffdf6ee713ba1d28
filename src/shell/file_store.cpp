#include "shell/file_store.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <system_error>

#include "library/file_io.h"
#include "library/file_saver.h"
#include "text/text.h"

namespace declarium {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::string_view kNoBytes = "-";

std::string ToHex(std::string_view bytes) {
  if (bytes.empty()) return std::string(kNoBytes);
  std::string hex;
  for (const char byte : bytes) {
    const auto number = static_cast<unsigned char>(byte);
    hex += kDigits[number >> 4];
    hex += kDigits[number & 0xF];
  }
  return hex;
}

std::optional<std::string> FromHex(std::string_view hex) {
  if (hex == kNoBytes) return std::string();
  std::string bytes;
  for (; hex.size() >= 2; hex.remove_prefix(2)) {
    const auto high = kDigits.find(hex[0]);
    const auto low = kDigits.find(hex[1]);
    if (high == kDigits.npos || low == kDigits.npos) return std::nullopt;
    bytes += static_cast<char>(high << 4 | low);
  }
  return hex.empty() ? std::optional(std::move(bytes)) : std::nullopt;
}

bool CanBeStored(std::u16string_view name) {
  return std::ranges::none_of(name, [](char16_t unit) { return unit < u' '; }) &&
         FromUtf8(ToUtf8(name)) == name;
}

bool IsFolderName(std::u16string_view level) {
  return !level.empty() && level != u"." && level != u".." && !level.contains(u'/') &&
         CanBeStored(level);
}

}  // namespace

std::optional<fs::path> FileStore::FileOf(std::u16string_view key) const {
  fs::path file = folder_;
  const auto levels = Split(key, u'\\');
  if (levels.empty()) return std::nullopt;
  for (const std::u16string_view level : levels) {
    if (!IsFolderName(level)) return std::nullopt;
    file /= fs::path(LowerCase(std::u16string(level)));
  }
  file += ".values";
  return file;
}

std::optional<FileStore::NamedValue> FileStore::ParseLine(std::string_view line) {
  const auto first = line.find(' ');
  const auto second = first == line.npos ? first : line.find(' ', first + 1);
  if (second == line.npos) return std::nullopt;
  NamedValue named;
  const std::string_view type = line.substr(0, first);
  const char* const type_end = std::to_address(type.end());
  const auto parsed = std::from_chars(std::to_address(type.begin()), type_end, named.value.type);
  auto bytes = FromHex(line.substr(first + 1, second - first - 1));
  if (parsed.ec != std::errc() || parsed.ptr != type_end || !bytes) return std::nullopt;
  named.value.bytes = std::move(*bytes);
  named.name = FromUtf8(line.substr(second + 1));
  return named;
}

std::vector<FileStore::NamedValue> FileStore::Load(const fs::path& file) {
  std::vector<NamedValue> values;
  const std::string content = ReadWholeFile(file).value_or("");
  for (std::string_view rest = content; !rest.empty();) {
    const auto end = std::min(rest.find('\n'), rest.size());
    if (auto value = ParseLine(rest.substr(0, end))) values.push_back(std::move(*value));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return values;
}

bool FileStore::Save(const fs::path& file, const std::vector<NamedValue>& values) {
  std::string content;
  for (const auto& [name, value] : values) {
    content += std::to_string(value.type) + ' ' + ToHex(value.bytes) + ' ' + ToUtf8(name) + '\n';
  }
  return WriteWholeFile(file, content).has_value();
}

bool FileStore::CreateKey(std::u16string_view key) {
  const auto file = FileOf(key);
  if (!file) return false;
  std::error_code error;
  if (fs::exists(*file, error)) return fs::is_regular_file(*file, error);
  fs::create_directories(file->parent_path(), error);
  return !error && Save(*file, {});
}

std::optional<RegistryValue> FileStore::Read(std::u16string_view key,
                                             std::u16string_view name) const {
  const auto file = FileOf(key);
  if (!file) return std::nullopt;
  for (auto& [stored_name, value] : Load(*file)) {
    if (EqualIgnoringCase(stored_name, name)) return value;
  }
  return std::nullopt;
}

bool FileStore::Write(std::u16string_view key, std::u16string_view name,
                      const RegistryValue& value) {
  const auto file = FileOf(key);
  if (!file || !CanBeStored(name)) return false;
  auto values = Load(*file);
  const auto found = std::ranges::find_if(
      values, [name](const NamedValue& v) { return EqualIgnoringCase(v.name, name); });
  if (found == values.end()) {
    values.push_back({std::u16string(name), value});
  } else {
    found->value = value;
  }
  return Save(*file, values);
}

}  // namespace declarium
