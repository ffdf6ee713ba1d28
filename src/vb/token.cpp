#include "vb/token.h"

#include <algorithm>
#include <array>

#include "text/text.h"

namespace declarium::vb {
namespace {

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\v' || unit == u'\f' || unit == 0x19 ||
         unit == 0xA0 || unit == 0x3000;
}

bool IsLineEnd(char16_t unit) {
  return unit == u'\r' || unit == u'\n';
}

bool IsHexDigit(char16_t unit) {
  return IsDigit(unit) || (unit >= u'A' && unit <= u'F') || (unit >= u'a' && unit <= u'f');
}

bool StartsOperand(char16_t unit) {
  return ContinuesName(unit) || unit == u'(' || unit == u'.' || unit == u'&' || unit == u'-' ||
         unit == u'"' || unit == u'[';
}

// What stands between the # of a date: digits, names of months, AM and PM, and of the separators
// at least one, so that "Close #1, #2" holds no date.
bool IsDateText(std::u16string_view text) {
  constexpr std::u16string_view kSeparators = u"/-:";
  constexpr std::u16string_view kOthers = u" ,.";
  bool separated = false;
  bool has_digit = false;
  bool has_letter = false;
  for (const char16_t unit : text) {
    if (kSeparators.contains(unit)) {
      separated = true;
    } else if (IsDigit(unit)) {
      has_digit = true;
    } else if ((unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z')) {
      has_letter = true;
    } else if (!kOthers.contains(unit)) {
      return false;
    }
  }
  return has_digit && (separated || has_letter);
}

}  // namespace

bool Token::IsWord(std::u16string_view lowered) const {
  if (kind != TokenKind::kName || text.size() != lowered.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if ((unit >= u'A' && unit <= u'Z' ? unit + 32 : unit) != lowered[i]) return false;
  }
  return true;
}

Token Tokenizer::Next() {
  Token token{TokenKind::kEnd, place_, {}};
  if (place_.offset >= text_.size()) return token;
  position_ = place_.offset;
  token.kind = Lex();
  token.text = text_.substr(place_.offset, position_ - place_.offset);
  place_.offset = position_;
  place_.column += static_cast<std::uint32_t>(token.text.size());
  if (token.kind == TokenKind::kLineEnd || token.kind == TokenKind::kContinuation ||
      token.kind == TokenKind::kComment) {
    CountLines(token.text);
  }
  Remember(token);
  return token;
}

Token Tokenizer::NextSignificant() {
  Token token = Next();
  while (token.IsSpace()) token = Next();
  return token;
}

void Tokenizer::Remember(const Token& token) {
  follows_name_ = token.kind == TokenKind::kName;
  switch (token.kind) {
    case TokenKind::kBlank:
    case TokenKind::kContinuation:
      return;
    case TokenKind::kLineEnd:
      starts_statement_ = true;
      follows_operand_ = false;
      return;
    case TokenKind::kNumber:  // at the start of a line its number
      follows_operand_ = true;
      return;
    case TokenKind::kOperator:
      starts_statement_ = token.IsOperator(u':');
      follows_operand_ = token.IsOperator(u')');
      return;
    case TokenKind::kName:
      starts_statement_ = token.IsWord(u"then") || token.IsWord(u"else");
      follows_operand_ = true;
      return;
    default:
      starts_statement_ = false;
      follows_operand_ = true;
      return;
  }
}

TokenKind Tokenizer::Lex() {
  const char16_t unit = text_[position_];
  if (IsBlank(unit)) {
    while (IsBlank(At(position_))) ++position_;
    return TokenKind::kBlank;
  }
  if (IsLineEnd(unit)) {
    position_ = LineEndAt(position_);
    return TokenKind::kLineEnd;
  }
  if (follows_name_ && IsTypeCharacter()) {
    ++position_;
    return TokenKind::kTypeCharacter;
  }
  if (StartsName(unit) || (unit == u'_' && ContinuesName(At(position_ + 1)))) return LexName();
  if (IsDigit(unit)) return LexNumber();
  return LexSign();
}

// Everything that begins with neither a letter nor a digit.
TokenKind Tokenizer::LexSign() {
  const char16_t unit = text_[position_];
  const char16_t next = At(position_ + 1);
  switch (unit) {
    case u'\'':
      return LexComment();
    case u'"':
      LexString();
      return TokenKind::kString;
    case u'#':
      if (LexDate()) return TokenKind::kDate;
      break;
    case u'_':
      if (LexContinuation()) return TokenKind::kContinuation;
      break;
    case u'[': {
      const auto close = text_.find_first_of(u"]\r\n", position_);
      if (close == text_.npos || text_[close] != u']') break;
      position_ = close + 1;
      return TokenKind::kName;
    }
    case u'.':
      if (IsDigit(next) && !follows_operand_) return LexNumber();
      break;
    case u'&':
      if ((next == u'H' || next == u'h') && IsHexDigit(At(position_ + 2))) return LexRadix(2);
      if ((next == u'O' || next == u'o') && IsDigit(At(position_ + 2))) return LexRadix(2);
      if (IsDigit(next) && !follows_operand_) return LexRadix(1);
      break;
    default:
      break;
  }
  const bool pair = (unit == u'<' && (next == u'>' || next == u'=')) ||
                    (unit == u'>' && next == u'=') || (unit == u':' && next == u'=');
  position_ += pair ? 2 : 1;
  constexpr std::u16string_view kSigns = u"()+-*/\\^&=<>,.:;!#?@$%[]";
  return kSigns.contains(unit) ? TokenKind::kOperator : TokenKind::kUnknown;
}

// Behind the line end at `position`.
std::size_t Tokenizer::LineEndAt(std::size_t position) const {
  return position + (text_[position] == u'\r' && At(position + 1) == u'\n' ? 2 : 1);
}

bool Tokenizer::LexContinuation() {
  auto end = position_ + 1;
  while (IsBlank(At(end))) ++end;
  if (end >= text_.size() || !IsLineEnd(text_[end])) return false;
  position_ = LineEndAt(end);
  return true;
}

TokenKind Tokenizer::LexComment() {
  for (;;) {
    const auto end = std::min(text_.find_first_of(u"\r\n", position_), text_.size());
    auto last = end;
    while (last > position_ && IsBlank(text_[last - 1])) --last;
    position_ = end;
    const bool continued = end < text_.size() && last >= place_.offset + 2 &&
                           text_[last - 1] == u'_' && IsBlank(text_[last - 2]);
    if (!continued) return TokenKind::kComment;
    position_ = LineEndAt(end);
  }
}

TokenKind Tokenizer::LexName() {
  while (ContinuesName(At(position_))) ++position_;
  const auto word = text_.substr(place_.offset, position_ - place_.offset);
  const bool is_comment =
      starts_statement_ && word.size() == 3 && Token{TokenKind::kName, place_, word}.IsWord(u"rem");
  return is_comment ? LexComment() : TokenKind::kName;
}

// A type character belongs to the name in front of it; "!" in front of a name reaches into a
// collection instead, and "^" in front of an operand is a power.
bool Tokenizer::IsTypeCharacter() const {
  const char16_t next = At(position_ + 1);
  switch (text_[position_]) {
    case u'%':
    case u'&':
    case u'@':
    case u'$':
    case u'#':
      return true;
    case u'!':
      return !StartsName(next) && next != u'[' && next != u'_';
    case u'^':
      return StandsForLongLong();
    default:
      return false;
  }
}

bool Tokenizer::StandsForLongLong() const {
  auto next = position_ + 1;
  while (IsBlank(At(next))) ++next;
  return !StartsOperand(At(next));
}

TokenKind Tokenizer::LexNumber() {
  while (IsDigit(At(position_))) ++position_;
  if (At(position_) == u'.') {
    ++position_;
    while (IsDigit(At(position_))) ++position_;
  }
  const char16_t mark = At(position_);
  if (mark == u'E' || mark == u'e' || mark == u'D' || mark == u'd') {
    auto digits = position_ + 1;
    if (At(digits) == u'+' || At(digits) == u'-') ++digits;
    if (IsDigit(At(digits))) {
      position_ = digits;
      while (IsDigit(At(position_))) ++position_;
    }
  }
  TakeNumberSuffix();
  return TokenKind::kNumber;
}

TokenKind Tokenizer::LexRadix(unsigned digits_from) {
  const bool hex = digits_from == 2 && LowerCase(text_[position_ + 1]) == u'h';
  position_ += digits_from;
  while (hex ? IsHexDigit(At(position_)) : IsDigit(At(position_))) ++position_;
  const char16_t suffix = At(position_);
  if (suffix == u'&' || suffix == u'%' || (suffix == u'^' && StandsForLongLong())) ++position_;
  return TokenKind::kNumber;
}

void Tokenizer::TakeNumberSuffix() {
  const char16_t next = LowerCase(At(position_ + 1));
  switch (At(position_)) {
    case u'%':
    case u'!':
    case u'#':
    case u'@':
      ++position_;
      return;
    case u'&':
      if (next != u'h' && next != u'o') ++position_;
      return;
    case u'^':
      if (StandsForLongLong()) ++position_;
      return;
    default:
      return;
  }
}

void Tokenizer::LexString() {
  for (++position_; position_ < text_.size() && !IsLineEnd(text_[position_]); ++position_) {
    if (text_[position_] != u'"') continue;
    if (At(position_ + 1) != u'"') {
      ++position_;
      return;
    }
    ++position_;
  }
}

bool Tokenizer::LexDate() {
  constexpr std::size_t kLongest = 40;
  const auto window = text_.substr(position_ + 1, kLongest);
  const auto close = window.find(u'#');
  if (close == window.npos || !IsDateText(window.substr(0, close))) return false;
  position_ += close + 2;
  return true;
}

void Tokenizer::CountLines(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsLineEnd(text[i])) continue;
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    ++place_.line;
    place_.column = static_cast<std::uint32_t>(text.size() - i);
  }
}

}  // namespace declarium::vb
