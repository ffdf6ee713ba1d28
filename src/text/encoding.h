// How the bytes of a text file stand for characters: recognizing it, and both ways between bytes
// and text. Libraries themselves are always in the code page of text/code_page.h.
#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace declarium {

struct Encoding {
  enum class Form { kCodePage, kUtf8, kUtf16LittleEndian, kUtf16BigEndian };
  Form form = Form::kCodePage;
  int code_page = 1250;   // of kCodePage: 874 or 1250 to 1258
  bool has_mark = false;  // a byte-order mark stands in front of the text

  friend bool operator==(const Encoding&, const Encoding&) = default;
};

// The encoding of libraries, and of the files that are written for them.
inline constexpr Encoding kLibraryEncoding = {};

// "windows-1250", "utf-8", "utf-16le" or "utf-16be".
[[nodiscard]] std::string EncodingName(const Encoding& encoding);

// The encoding of such a name in any case, without a mark; 1250 and cp1250 name a code page too.
[[nodiscard]] std::optional<Encoding> EncodingOfName(std::string_view name);

// Every name, parted by commas.
[[nodiscard]] std::string EncodingNames();

// The encoding of a file's bytes: the one that its mark says; without a mark UTF-8 when some byte
// is not ASCII and all of them are well-formed UTF-8; `otherwise` for anything else.
[[nodiscard]] Encoding RecognizeEncoding(std::string_view bytes, const Encoding& otherwise);

// How many bytes of a file the mark takes.
[[nodiscard]] std::size_t MarkLength(const Encoding& encoding) noexcept;

// The text behind the mark. What is no character of the encoding becomes U+FFFD.
[[nodiscard]] std::u16string DecodeText(std::string_view bytes, const Encoding& encoding);

// The bytes of `text`, without a mark; where the first character stands (0-based) that the encoding
// does not have.
[[nodiscard]] std::expected<std::string, std::size_t> EncodeText(std::u16string_view text,
                                                                 const Encoding& encoding);

}  // namespace declarium
