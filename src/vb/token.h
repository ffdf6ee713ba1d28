// Cuts Visual Basic source into tokens. Nothing is lost: the texts of all tokens in a row are the
// source.
//
//   blanks and tabs       continuation  "_" with the line end behind it, behind a blank or an
//   line ends             CR LF, CR, LF     operator
//   comments              ' or Rem, up to the line end; " _" in front of that continues them
//   names                 letters, digits, "_"; [any text]; a type character is a token of its own
//   numbers               10 1.5 1E3 &H1F &O17 &17 with their suffix % & ^ ! # @
//   strings               "text" with "" for a quote; an unclosed one ends at the line end
//   dates                 #1/31/1999#
//   operators             one or two units: <> <= >= :=
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace declarium::vb {

struct Place {
  std::size_t offset = 0;    // 0-based, in UTF-16 units
  std::uint32_t line = 1;    // of the source, 1-based
  std::uint32_t column = 1;  // in UTF-16 units, 1-based

  friend bool operator==(const Place&, const Place&) = default;
};

enum class TokenKind : unsigned char {
  kEnd,  // of the source; empty
  kBlank,
  kContinuation,
  kLineEnd,
  kComment,
  kName,
  kTypeCharacter,
  kNumber,
  kString,
  kDate,
  kOperator,
  kUnknown,  // a unit that the language has no use for
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  Place place;
  std::u16string_view text;

  [[nodiscard]] std::size_t End() const { return place.offset + text.size(); }
  [[nodiscard]] bool IsOperator(char16_t unit) const {
    return kind == TokenKind::kOperator && text.size() == 1 && text.front() == unit;
  }
  // Whether it is this word of the language, given in lower case.
  [[nodiscard]] bool IsWord(std::u16string_view lowered) const;
  // Whether it only separates others: blanks and continuations.
  [[nodiscard]] bool IsSpace() const {
    return kind == TokenKind::kBlank || kind == TokenKind::kContinuation;
  }
};

class Tokenizer {
 public:
  // `text` must outlive the tokens. A walk may start anywhere between two lines.
  explicit Tokenizer(std::u16string_view text, Place start = {}) : text_(text), place_(start) {}

  // The next token; kEnd again and again behind the last.
  Token Next();
  // The next token that is no space.
  Token NextSignificant();

  [[nodiscard]] Place Here() const { return place_; }

 private:
  [[nodiscard]] char16_t At(std::size_t position) const {
    return position < text_.size() ? text_[position] : u'\0';
  }
  TokenKind Lex();
  TokenKind LexComment();
  TokenKind LexName();
  TokenKind LexNumber();
  TokenKind LexRadix(unsigned digits_from);
  TokenKind LexSign();
  void LexString();
  bool LexDate();
  bool LexContinuation();
  void TakeNumberSuffix();
  [[nodiscard]] bool IsTypeCharacter() const;
  [[nodiscard]] bool StandsForLongLong() const;
  [[nodiscard]] std::size_t LineEndAt(std::size_t position) const;
  void CountLines(std::u16string_view text);
  void Remember(const Token& token);

  std::u16string_view text_;
  Place place_;
  std::size_t position_ = 0;      // the end of the token being read
  bool starts_statement_ = true;  // where Rem begins a comment
  bool follows_operand_ = false;  // where "&1" and ".5" are operators
  bool follows_name_ = false;     // directly, where a type character can stand
};

// A letter, or what other alphabets have; and what may follow in a name.
[[nodiscard]] constexpr bool StartsName(char16_t unit) noexcept {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
         (unit >= 0x80 && unit != 0xA0 && unit != 0x3000);
}
[[nodiscard]] constexpr bool ContinuesName(char16_t unit) noexcept {
  return StartsName(unit) || (unit >= u'0' && unit <= u'9') || unit == u'_';
}

}  // namespace declarium::vb
