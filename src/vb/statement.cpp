#include "vb/statement.h"

#include <algorithm>

#include "text/scan.h"
#include "text/text.h"

namespace declarium::vb {

std::u16string_view Statement::Text() const {
  const auto size = tokens.back().End() - tokens.front().place.offset;
  return {tokens.front().text.data(), size};
}

bool StatementReader::Next(Statement& statement) {
  statement.tokens.clear();
  statement.comment.reset();
  for (;;) {
    const Token token = tokenizer_.Next();
    at_line_start_ = token.kind == TokenKind::kLineEnd;
    switch (token.kind) {
      case TokenKind::kBlank:
      case TokenKind::kContinuation:
        break;
      case TokenKind::kComment:
        statement.comment = token;
        break;
      case TokenKind::kEnd:
      case TokenKind::kLineEnd:
        if (!statement.tokens.empty() || statement.comment) return true;
        if (token.kind == TokenKind::kEnd) return false;
        break;
      default:
        if (!token.IsOperator(u':')) {
          statement.tokens.push_back(token);
        } else if (!statement.tokens.empty()) {
          return true;
        }
        break;
    }
  }
}

void StatementReader::SkipLine() {
  Token token = tokenizer_.Next();
  while (token.kind != TokenKind::kLineEnd && token.kind != TokenKind::kEnd)
    token = tokenizer_.Next();
  at_line_start_ = true;
}

std::u16string_view StatementReader::FirstWord(char16_t (&word)[kLongestWord]) const {
  auto at = tokenizer_.Here().offset;
  while (at < text_.size() && (text_[at] == u' ' || text_[at] == u'\t')) ++at;
  std::size_t length = 0;
  for (; at < text_.size() && length < kLongestWord; ++at, ++length) {
    const char16_t unit = text_[at];
    if (!ContinuesName(unit) && !(length == 0 && unit == u'#')) break;
    word[length] = unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  }
  return {word, length};
}

std::size_t StatementReader::FindLineEnd(std::size_t position) {
  // A source without one of the two is searched for it once, not again for every line.
  if (!knows_line_ends_ || next_cr_ < position) next_cr_ = FindUnit(text_, u'\r', position);
  if (!knows_line_ends_ || next_lf_ < position) next_lf_ = FindUnit(text_, u'\n', position);
  knows_line_ends_ = true;
  return std::min({next_cr_, next_lf_, text_.size()});
}

StatementReader::Line StatementReader::LineFrom(std::size_t position) {
  Line line{position, 0, false};
  for (bool continued = true; continued && line.end < text_.size();) {
    const auto start = line.end;
    const auto end = FindLineEnd(start);
    const auto piece = text_.substr(start, end - start);
    line.has_colon = line.has_colon || FindUnit(piece, u':') != piece.npos;
    const auto last = piece.find_last_not_of(u" \t");
    // More than a continuation may end like this; then the next line is read with it, which is
    // only slower where it is wanted, so it is not passed over.
    continued = last != piece.npos && piece[last] == u'_';
    line.has_colon = line.has_colon || continued;
    line.end = end;
    if (end < text_.size())
      line.end += text_[end] == u'\r' && end + 1 < text_.size() && text_[end + 1] == u'\n' ? 2 : 1;
    ++line.count;
    if (line.has_colon) return line;
  }
  return line;
}

void StatementReader::PassTo(const Line& line) {
  const Place place = tokenizer_.Here();
  tokenizer_ = Tokenizer(text_, {line.end, place.line + line.count, 1});
  at_line_start_ = true;
}

}  // namespace declarium::vb
