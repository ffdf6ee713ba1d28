#include "text/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/windows_code_pages.h"

namespace declarium {
namespace {

constexpr const auto& kUpperHalf =
    std::ranges::find(kWindowsCodePages, 1250, &WindowsCodePage::number)->upper_half;

constexpr auto kDecode = [] {
  std::array<char16_t, 256> table{};
  for (std::size_t byte = 0; byte < 128; ++byte) table[byte] = static_cast<char16_t>(byte);
  std::ranges::copy(kUpperHalf, table.begin() + 128);
  return table;
}();

// Every character of the code page lies below this; the table covers them all.
constexpr std::size_t kEncodeSize = 0x2123;

constexpr auto kEncode = [] {
  std::array<char, kEncodeSize> table{};
  table.fill('?');
  for (std::size_t byte = 0; byte < 256; ++byte) {
    table[kDecode[byte]] = static_cast<char>(byte);
  }
  return table;
}();

constexpr std::size_t kBlock = 32;
constexpr std::size_t kSmallBlock = 8;

char Encode(char16_t unit) {
  return unit < kEncodeSize ? kEncode[unit] : '?';
}

// Encodes whole blocks from `start` on; returns where the rest starts.
template <std::size_t block>
std::size_t EncodeBlocks(std::u16string_view text, std::size_t start, char* out) {
  auto i = start;
  for (; text.size() - i >= block; i += block) {
    char16_t any = 0;
    for (std::size_t k = 0; k < block; ++k) any |= text[i + k];
    if (any < 0x80) {
      for (std::size_t k = 0; k < block; ++k) out[i + k] = static_cast<char>(text[i + k]);
    } else {
      for (std::size_t k = 0; k < block; ++k) out[i + k] = Encode(text[i + k]);
    }
  }
  return i;
}

}  // namespace

void DecodeCodePageInto(std::string_view bytes, char16_t* out) noexcept {
  const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
  std::size_t i = 0;
  // Blocks of plain ASCII, nearly all of a library, are widened by vector instructions.
  while (bytes.size() - i >= kBlock) {
    unsigned char any = 0;
    for (std::size_t k = 0; k < kBlock; ++k) any |= in[i + k];
    if (any < 0x80) {
      for (std::size_t k = 0; k < kBlock; ++k) out[i + k] = in[i + k];
    } else {
      for (std::size_t k = 0; k < kBlock; ++k) out[i + k] = kDecode[in[i + k]];
    }
    i += kBlock;
  }
  for (; i < bytes.size(); ++i) out[i] = kDecode[in[i]];
}

std::size_t FindOutsideCodePage(std::u16string_view text, std::size_t from) noexcept {
  for (auto i = from; i < text.size(); ++i) {
    const auto unit = text[i];
    if (unit >= 0x80 && (unit >= kEncodeSize || kEncode[unit] == '?')) return i;
  }
  return text.npos;
}

std::u16string DecodeCodePage(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  DecodeCodePageInto(bytes, text.data());
  return text;
}

void EncodeCodePageInto(std::u16string_view text, char* out) noexcept {
  const auto i = EncodeBlocks<kBlock>(text, 0, out);
  // Most entries of a library are no longer than a few small blocks.
  const auto rest = EncodeBlocks<kSmallBlock>(text, i, out);
  for (auto k = rest; k < text.size(); ++k) out[k] = Encode(text[k]);
}

void AppendCodePage(std::u16string_view text, std::string& out) {
  const auto start = out.size();
  out.resize(start + text.size());
  EncodeCodePageInto(text, out.data() + start);
}

std::string EncodeCodePage(std::u16string_view text) {
  std::string bytes;
  AppendCodePage(text, bytes);
  return bytes;
}

}  // namespace declarium
