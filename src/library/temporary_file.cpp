#include "library/temporary_file.h"

#include <algorithm>
#include <charconv>
#include <random>
#include <string>

namespace declarium {
namespace {

namespace fs = std::filesystem;
using Native = fs::path::string_type;
using NativeView = std::basic_string_view<fs::path::value_type>;

// The longest file name, in units of the system's own encoding.
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kHashDigits = 16;

constexpr std::string_view kPrefix = ".declarium-";
constexpr std::string_view kExtension = ".tmp";
constexpr auto kPoint = static_cast<fs::path::value_type>('.');

// ASCII in the system's own encoding.
Native InNative(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

bool IsNumber(NativeView text) {
  return !text.empty() &&
         std::ranges::all_of(text, [](auto unit) { return unit >= '0' && unit <= '9'; });
}

// Cuts `rest` at its first point; all of it when there is none.
NativeView TakeWord(NativeView& rest) {
  const auto end = std::min(rest.find(kPoint), rest.size());
  const auto word = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return word;
}

std::optional<std::uint64_t> ParseHash(NativeView digits) {
  if (digits.size() != kHashDigits) return std::nullopt;
  std::string ascii;
  for (const auto unit : digits) {
    const bool is_hex = (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'f');
    ascii += is_hex ? static_cast<char>(unit) : '?';
  }
  std::uint64_t hash = 0;
  const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), hash, 16);
  if (error != std::errc() || end != ascii.data() + ascii.size()) return std::nullopt;
  return hash;
}

std::string HashText(std::uint64_t hash) {
  std::string digits(kHashDigits, '0');
  for (std::size_t i = kHashDigits; hash != 0; hash >>= 4U)
    digits[--i] = "0123456789abcdef"[hash & 15U];
  return digits;
}

}  // namespace

fs::path TemporaryFileFor(const fs::path& target, unsigned long process, std::uint64_t hash) {
  std::random_device random;
  auto name = InNative(std::string(kPrefix) + std::to_string(process) + "." +
                       std::to_string(random()) + std::to_string(random()));
  const auto rest = InNative("." + HashText(hash) + ".") + target.filename().native();
  const bool fits = name.size() + rest.size() + kExtension.size() <= kLongestName;
  if (fits && !target.filename().native().starts_with(kPoint)) name += rest;
  return target.parent_path() / (name + InNative(kExtension));
}

std::optional<TemporaryFileName> ParseTemporaryFileName(const fs::path& path) {
  const Native name = path.filename().native();
  NativeView rest = name;
  if (rest.size() < kPrefix.size() + kExtension.size() || !rest.starts_with(InNative(kPrefix)) ||
      !rest.ends_with(InNative(kExtension))) {
    return std::nullopt;
  }
  rest.remove_prefix(kPrefix.size());
  rest.remove_suffix(kExtension.size());
  if (!rest.contains(kPoint) || !IsNumber(TakeWord(rest))) return std::nullopt;
  if (!IsNumber(TakeWord(rest))) return std::nullopt;
  if (rest.empty()) return TemporaryFileName{};
  const auto hash = ParseHash(TakeWord(rest));
  if (!hash || rest.empty() || rest.front() == kPoint) return std::nullopt;
  return TemporaryFileName{hash, fs::path(Native(rest))};
}

}  // namespace declarium
