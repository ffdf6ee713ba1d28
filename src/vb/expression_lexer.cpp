#include "vb/expression_lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "vb/name.h"

namespace declarium::vb {
namespace {

constexpr std::array<std::string_view, 7> kWordOperators = {"and", "or",  "xor", "not",
                                                            "mod", "eqv", "imp"};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsWordPart(char c) {
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  std::expected<std::vector<ExpressionToken>, std::string> Lex() {
    while (position_ < text_.size() && error_.empty()) LexOne();
    if (!error_.empty()) return std::unexpected(error_);
    return std::move(tokens_);
  }

 private:
  [[nodiscard]] char Next(std::size_t ahead = 0) const {
    return position_ + ahead < text_.size() ? text_[position_ + ahead] : '\0';
  }

  void LexOne() {
    const char c = Next();
    if (c == ' ') {
      ++position_;
    } else if (c == '"') {
      LexString();
    } else if (IsDigit(c) || (c == '.' && IsDigit(Next(1)))) {
      LexDecimal();
    } else if (c == '&' && (Next(1) == 'H' || Next(1) == 'h')) {
      LexRadix(16);
    } else if (c == '&' && (Next(1) == 'O' || Next(1) == 'o')) {
      LexRadix(8);
    } else if (IsWordPart(c)) {
      LexWord();
    } else {
      LexOperator();
    }
  }

  void Add(Value value) {
    tokens_.push_back({ExpressionToken::Kind::kLiteral, "", std::move(value)});
  }

  void LexString() {
    std::string content;
    for (++position_; position_ < text_.size(); ++position_) {
      if (Next() != '"') {
        content += Next();
      } else if (Next(1) == '"') {
        content += '"';
        ++position_;
      } else {
        ++position_;
        Add(Value::String(std::move(content)));
        return;
      }
    }
    error_ = "a text without its closing quote";
  }

  void LexDecimal() {
    const std::size_t begin = position_;
    while (IsDigit(Next()) || Next() == '.') ++position_;
    if ((Next() == 'E' || Next() == 'e') &&
        (IsDigit(Next(1)) || ((Next(1) == '-' || Next(1) == '+') && IsDigit(Next(2)))))
      for (position_ += 2; IsDigit(Next());) ++position_;
    const std::string_view digits = text_.substr(begin, position_ - begin);
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size())
      error_ = "not a number: " + std::string(digits);
    const bool whole = digits.find_first_of(".Ee") == std::string_view::npos;
    AddNumber(value, whole);
  }

  void AddNumber(double value, bool whole) {
    const char suffix = Next();
    const bool fits_integer = value <= std::numeric_limits<std::int16_t>::max();
    const bool fits_long = value <= std::numeric_limits<std::int32_t>::max();
    if (suffix == '#' || suffix == '!') ++position_;
    if (suffix == '#' || suffix == '!' || !whole) return Add(Value::Double(value));
    const bool as_long = suffix == '&' && Next(1) != 'H' && Next(1) != 'O';
    if (as_long || suffix == '%') ++position_;
    if ((as_long && !fits_long) || (suffix == '%' && !fits_integer)) error_ = "overflow";
    const auto number = static_cast<std::int64_t>(fits_long ? value : 0);
    if (!fits_long) return Add(Value::Double(value));
    Add(as_long || !fits_integer ? Value::Long(number) : Value::Integer(number));
  }

  void LexRadix(int radix) {
    position_ += 2;
    std::uint64_t value = 0;
    const auto read =
        std::from_chars(text_.data() + position_, text_.data() + text_.size(), value, radix);
    if (read.ec != std::errc() || value > std::numeric_limits<std::uint32_t>::max()) {
      error_ = "not a 32-bit number";
      return;
    }
    position_ = static_cast<std::size_t>(read.ptr - text_.data());
    const bool as_long = Next() == '&';
    if (as_long || Next() == '%') ++position_;
    if (!as_long && value <= std::numeric_limits<std::uint16_t>::max())
      return Add(Value::Integer(static_cast<std::int16_t>(value)));
    Add(Value::Long(static_cast<std::int32_t>(value)));
  }

  void LexWord() {
    const std::size_t begin = position_;
    while (IsWordPart(Next())) ++position_;
    std::string word(text_.substr(begin, position_ - begin));
    std::string lower = Lower(word);
    const bool is_operator = std::ranges::find(kWordOperators, lower) != kWordOperators.end();
    if (!is_operator && !IsLegalName(word)) error_ = "\"" + word + "\" is no name";
    tokens_.push_back(
        {is_operator ? ExpressionToken::Kind::kOperator : ExpressionToken::Kind::kName,
         is_operator ? std::move(lower) : std::move(word), Value()});
  }

  void LexOperator() {
    constexpr std::array<std::string_view, 3> kPairs = {"<>", "<=", ">="};
    const std::string_view pair = text_.substr(position_, 2);
    const bool is_pair = std::ranges::find(kPairs, pair) != kPairs.end();
    const std::string_view operation = is_pair ? pair : text_.substr(position_, 1);
    if (std::string_view("()+-*/\\^&=<>").find(operation[0]) == std::string_view::npos)
      error_ = "\"" + std::string(operation) + "\" is no operator";
    position_ += operation.size();
    tokens_.push_back({ExpressionToken::Kind::kOperator, std::string(operation), Value()});
  }

  std::string_view text_;
  std::size_t position_ = 0;
  std::vector<ExpressionToken> tokens_;
  std::string error_;
};

}  // namespace

std::expected<std::vector<ExpressionToken>, std::string> LexExpression(std::string_view text) {
  return Lexer(text).Lex();
}

}  // namespace declarium::vb
