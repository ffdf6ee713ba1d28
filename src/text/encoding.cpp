#include "text/encoding.h"

#include <algorithm>

#include "text/text.h"
#include "text/windows_code_pages.h"

namespace declarium {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

struct Unicode {
  Encoding::Form form;
  std::string_view name;
  std::string_view mark;
};

constexpr Unicode kUnicodes[] = {
    {Encoding::Form::kUtf8, "utf-8", kUtf8Mark},
    {Encoding::Form::kUtf16LittleEndian, "utf-16le", kLittleEndianMark},
    {Encoding::Form::kUtf16BigEndian, "utf-16be", kBigEndianMark},
};

enum class ByteOrder { kLittle, kBig };

constexpr std::string_view kCodePagePrefix = "windows-";

unsigned char ByteAt(std::string_view bytes, std::size_t i) {
  return static_cast<unsigned char>(bytes[i]);
}

bool IsAscii(std::string_view bytes) {
  constexpr std::size_t kAtOnce = 32;
  std::size_t i = 0;
  // Blocks are looked at by vector instructions.
  for (; bytes.size() - i >= kAtOnce; i += kAtOnce) {
    unsigned char any = 0;
    for (std::size_t k = 0; k < kAtOnce; ++k) any |= ByteAt(bytes, i + k);
    if (any >= 0x80) return false;
  }
  return std::ranges::all_of(bytes.substr(i),
                             [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// The length of the well-formed sequence that `bytes` begin with; 0 for none.
std::size_t SequenceLength(std::string_view bytes) {
  const auto lead = ByteAt(bytes, 0);
  if (lead < 0x80) return 1;
  // The second byte's range keeps out overlong forms, surrogates and what lies behind U+10FFFF.
  struct Range {
    std::size_t length;
    unsigned char first;
    unsigned char last;
  };
  const auto range = [lead]() -> Range {
    if (lead < 0xC2 || lead > 0xF4) return {0, 0, 0};
    if (lead < 0xE0) return {2, 0x80, 0xBF};
    if (lead == 0xE0) return {3, 0xA0, 0xBF};
    if (lead == 0xED) return {3, 0x80, 0x9F};
    if (lead < 0xF0) return {3, 0x80, 0xBF};
    if (lead == 0xF0) return {4, 0x90, 0xBF};
    return {4, 0x80, static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
  }();
  if (range.length == 0 || bytes.size() < range.length) return 0;
  if (ByteAt(bytes, 1) < range.first || ByteAt(bytes, 1) > range.last) return 0;
  for (std::size_t i = 2; i < range.length; ++i) {
    if ((ByteAt(bytes, i) & 0xC0) != 0x80) return 0;
  }
  return range.length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto length = SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

const WindowsCodePage* FindCodePage(int number) {
  const auto* const page = std::ranges::find(kWindowsCodePages, number, &WindowsCodePage::number);
  return page == std::end(kWindowsCodePages) ? nullptr : page;
}

std::u16string DecodeBytes(std::string_view bytes, const WindowsCodePage& page) {
  std::u16string text(bytes.size(), u'\0');
  std::ranges::transform(bytes, text.begin(), [&](char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return number < 0x80 ? char16_t{number} : page.upper_half[number - 0x80U];
  });
  return text;
}

std::u16string DecodeUtf16(std::string_view bytes, ByteOrder order) {
  std::u16string text;
  text.reserve(bytes.size() / 2 + 1);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = ByteAt(bytes, order == ByteOrder::kBig ? i + 1 : i);
    const auto high = ByteAt(bytes, order == ByteOrder::kBig ? i : i + 1);
    text += static_cast<char16_t>(high << 8 | low);
  }
  if (bytes.size() % 2 != 0) text += kReplacement;
  return text;
}

std::string EncodeUtf16(std::u16string_view text, ByteOrder order) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  for (const char16_t unit : text) {
    const auto low = static_cast<char>(unit & 0xFF);
    const auto high = static_cast<char>(unit >> 8);
    bytes += order == ByteOrder::kBig ? high : low;
    bytes += order == ByteOrder::kBig ? low : high;
  }
  return bytes;
}

std::expected<std::string, std::size_t> EncodeBytes(std::u16string_view text,
                                                    const WindowsCodePage& page) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      bytes += static_cast<char>(unit);
      continue;
    }
    const auto found = std::ranges::find(page.upper_half, unit);
    if (found == page.upper_half.end() || unit == kReplacement) {
      return std::unexpected(bytes.size());
    }
    bytes += static_cast<char>(0x80 + (found - page.upper_half.begin()));
  }
  return bytes;
}

std::string AsciiLower(std::string_view text) {
  return ToUtf8(LowerCase(FromUtf8(text)));
}

}  // namespace

std::string EncodingName(const Encoding& encoding) {
  for (const auto& [form, name, mark] : kUnicodes) {
    if (form == encoding.form) return std::string(name);
  }
  return std::string(kCodePagePrefix) + std::to_string(encoding.code_page);
}

std::optional<Encoding> EncodingOfName(std::string_view name) {
  const auto sought = AsciiLower(name);
  for (const auto& unicode : kUnicodes) {
    if (unicode.name == sought) return Encoding{.form = unicode.form};
  }
  for (const auto& page : kWindowsCodePages) {
    const auto number = std::to_string(page.number);
    for (const auto prefix : {kCodePagePrefix, std::string_view("cp"), std::string_view()}) {
      if (sought == std::string(prefix) + number) return Encoding{.code_page = page.number};
    }
  }
  return std::nullopt;
}

std::string EncodingNames() {
  std::string names;
  for (const auto& page : kWindowsCodePages) {
    names += EncodingName({.code_page = page.number}) + ", ";
  }
  for (const auto& unicode : kUnicodes) {
    names += unicode.name;
    if (&unicode != std::end(kUnicodes) - 1) names += ", ";
  }
  return names;
}

Encoding RecognizeEncoding(std::string_view bytes, const Encoding& otherwise) {
  for (const auto& unicode : kUnicodes) {
    if (bytes.starts_with(unicode.mark)) return {.form = unicode.form, .has_mark = true};
  }
  if (!IsAscii(bytes) && IsUtf8(bytes)) return {.form = Encoding::Form::kUtf8};
  return otherwise;
}

std::size_t MarkLength(const Encoding& encoding) noexcept {
  if (!encoding.has_mark) return 0;
  return encoding.form == Encoding::Form::kUtf8 ? kUtf8Mark.size() : kLittleEndianMark.size();
}

std::u16string DecodeText(std::string_view bytes, const Encoding& encoding) {
  bytes.remove_prefix(std::min(MarkLength(encoding), bytes.size()));
  switch (encoding.form) {
    case Encoding::Form::kUtf8:
      return FromUtf8(bytes);
    case Encoding::Form::kUtf16LittleEndian:
      return DecodeUtf16(bytes, ByteOrder::kLittle);
    case Encoding::Form::kUtf16BigEndian:
      return DecodeUtf16(bytes, ByteOrder::kBig);
    case Encoding::Form::kCodePage:
      break;
  }
  return DecodeBytes(bytes, *FindCodePage(encoding.code_page));
}

std::expected<std::string, std::size_t> EncodeText(std::u16string_view text,
                                                   const Encoding& encoding) {
  switch (encoding.form) {
    case Encoding::Form::kUtf8:
      return ToUtf8(text);
    case Encoding::Form::kUtf16LittleEndian:
      return EncodeUtf16(text, ByteOrder::kLittle);
    case Encoding::Form::kUtf16BigEndian:
      return EncodeUtf16(text, ByteOrder::kBig);
    case Encoding::Form::kCodePage:
      break;
  }
  return EncodeBytes(text, *FindCodePage(encoding.code_page));
}

}  // namespace declarium
