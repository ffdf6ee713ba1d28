// Windows-1250, the code page of library files. All 256 bytes map both ways: the five
// bytes that the code page leaves open (0x81 0x83 0x88 0x90 0x98) stand for the control characters
// of the same number, so any file survives decoding and encoding byte for byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace declarium {

// One character per byte: position i of the result is byte i.
[[nodiscard]] std::u16string DecodeCodePage(std::string_view bytes);

// Decodes into storage of at least bytes.size() units.
void DecodeCodePageInto(std::string_view bytes, char16_t* out) noexcept;

// One byte per code unit; a unit outside the code page becomes '?'.
[[nodiscard]] std::string EncodeCodePage(std::u16string_view text);

// Appends the encoded text to `out`.
void AppendCodePage(std::u16string_view text, std::string& out);

// Encodes into storage of at least text.size() bytes.
void EncodeCodePageInto(std::u16string_view text, char* out) noexcept;

// Where the first unit stands, at or behind `from`, that the code page does not have; npos for
// none.
[[nodiscard]] std::size_t FindOutsideCodePage(std::u16string_view text,
                                              std::size_t from = 0) noexcept;

}  // namespace declarium
