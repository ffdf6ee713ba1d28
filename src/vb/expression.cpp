#include "vb/expression.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "text/text.h"
#include "vb/literal.h"
#include "vb/token.h"

namespace declarium::vb {
namespace {

std::unexpected<std::string> Fail(std::string reason) {
  return std::unexpected(std::move(reason));
}

double AsReal(const Value& value) {
  return value.type == Value::Type::kDouble ? value.real : static_cast<double>(value.whole);
}

// Halves go to the even neighbor.
std::expected<std::int64_t, std::string> AsWhole(const Value& value) {
  if (value.type == Value::Type::kString) return Fail("a text where a number is needed");
  if (value.type != Value::Type::kDouble) return value.whole;
  const double rounded = std::nearbyint(value.real);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max())
    return Fail("overflow");
  return static_cast<std::int64_t>(rounded);
}

template <class Whole>
bool Fits(std::int64_t whole) {
  return whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max();
}

Evaluated Fit(Value::Type type, std::int64_t whole) {
  if (type == Value::Type::kLongLong) return Value::LongLong(whole);
  if (type == Value::Type::kInteger)
    return Fits<std::int16_t>(whole) ? Evaluated(Value::Integer(whole)) : Fail("overflow");
  return Fits<std::int32_t>(whole) ? Evaluated(Value::Long(whole)) : Fail("overflow");
}

Value::Type WiderWhole(const Value& left, const Value& right) {
  if (left.type == Value::Type::kLongLong || right.type == Value::Type::kLongLong)
    return Value::Type::kLongLong;
  const bool integers = left.type == Value::Type::kInteger && right.type == Value::Type::kInteger;
  return integers ? Value::Type::kInteger : Value::Type::kLong;
}

Evaluated WholeArithmetic(std::string_view operation, Value::Type type, std::int64_t left,
                          std::int64_t right) {
  std::int64_t result = 0;
  const bool overflows = operation == "+"   ? __builtin_add_overflow(left, right, &result)
                         : operation == "-" ? __builtin_sub_overflow(left, right, &result)
                                            : __builtin_mul_overflow(left, right, &result);
  return overflows ? Fail("overflow") : Fit(type, result);
}

Evaluated RealArithmetic(std::string_view operation, double left, double right) {
  if (operation == "+") return Value::Double(left + right);
  if (operation == "-") return Value::Double(left - right);
  if (operation == "*") return Value::Double(left * right);
  if (operation == "^") return Value::Double(std::pow(left, right));
  if (right == 0) return Fail("division by zero");
  return Value::Double(left / right);
}

Evaluated Arithmetic(std::string_view operation, const Value& left, const Value& right) {
  if (left.type == Value::Type::kString || right.type == Value::Type::kString) {
    if (operation == "+" && left.type == right.type) return Value::String(left.text + right.text);
    return Fail("a text where a number is needed");
  }
  const bool real = left.type == Value::Type::kDouble || right.type == Value::Type::kDouble;
  if (real || operation == "/" || operation == "^")
    return RealArithmetic(operation, AsReal(left), AsReal(right));
  return WholeArithmetic(operation, WiderWhole(left, right), left.whole, right.whole);
}

std::int64_t Bitwise(std::string_view operation, std::int64_t left, std::int64_t right) {
  if (operation == "and") return left & right;
  if (operation == "or") return left | right;
  if (operation == "xor") return left ^ right;
  if (operation == "eqv") return ~(left ^ right);
  return ~left | right;  // Imp
}

// The operators that turn both sides into whole numbers first.
Evaluated WholeOperation(std::string_view operation, const Value& left, const Value& right) {
  const auto a = AsWhole(left);
  const auto b = AsWhole(right);
  if (!a) return Fail(a.error());
  if (!b) return Fail(b.error());
  const Value::Type type = WiderWhole(left, right);
  if (operation != "\\" && operation != "mod") return Fit(type, Bitwise(operation, *a, *b));
  if (*b == 0) return Fail("division by zero");
  if (*b == -1) return operation == "mod" ? Fit(type, 0) : WholeArithmetic("-", type, 0, *a);
  return Fit(type, operation == "\\" ? *a / *b : *a % *b);
}

int Compare(const Value& left, const Value& right) {
  if (left.type == Value::Type::kString)
    return left.text < right.text ? -1 : (left.text > right.text ? 1 : 0);
  return AsReal(left) < AsReal(right) ? -1 : (AsReal(left) > AsReal(right) ? 1 : 0);
}

Evaluated Comparison(std::string_view operation, const Value& left, const Value& right) {
  if ((left.type == Value::Type::kString) != (right.type == Value::Type::kString))
    return Fail("a text compared with a number");
  const int order = Compare(left, right);
  const bool holds = operation == "="    ? order == 0
                     : operation == "<>" ? order != 0
                     : operation == "<"  ? order < 0
                     : operation == ">"  ? order > 0
                     : operation == "<=" ? order <= 0
                                         : order >= 0;
  return Value::Integer(holds ? -1 : 0);
}

Evaluated Apply(std::string_view operation, const Value& left, const Value& right) {
  if (operation == "&") {
    if (left.type == Value::Type::kString && right.type == Value::Type::kString)
      return Value::String(left.text + right.text);
    return Fail("a number joined to a text");
  }
  if (operation == "=" || operation[0] == '<' || operation[0] == '>')
    return Comparison(operation, left, right);
  if (operation == "+" || operation == "-" || operation == "*" || operation == "/" ||
      operation == "^")
    return Arithmetic(operation, left, right);
  return WholeOperation(operation, left, right);
}

// The binary operators, loosest first. Unary minus stands between "^" and "*", Not between the
// comparisons and And.
constexpr std::array<std::array<std::string_view, 6>, 13> kLevels = {
    {{"imp"},
     {"eqv"},
     {"xor"},
     {"or"},
     {"and"},
     {"not"},
     {"=", "<>", "<", ">", "<=", ">="},
     {"&"},
     {"+", "-"},
     {"mod"},
     {"\\"},
     {"*", "/"},
     {"minus"}}};
constexpr std::size_t kNotLevel = 5;
constexpr std::size_t kMinusLevel = 12;

struct ExpressionToken {
  enum class Kind { kLiteral, kName, kOperator };
  Kind kind;
  std::string operation;  // kOperator; a word is in lower case
  std::u16string name;    // kName
  Value value;            // kLiteral
};

bool IsOperatorWord(std::string_view word) {
  constexpr std::array<std::string_view, 7> kWords = {"and", "or",  "xor", "not",
                                                      "mod", "eqv", "imp"};
  return std::ranges::find(kWords, word) != kWords.end();
}

// Cuts an expression into literals, names with what qualifies them, and operators.
class Lexer {
 public:
  explicit Lexer(std::u16string_view text) : tokenizer_(text) {}

  std::expected<std::vector<ExpressionToken>, std::string> Lex() {
    for (Token token = Take(); token.kind != TokenKind::kEnd; token = Take()) {
      if (const auto added = Add(token); !added) return Fail(added.error());
    }
    return std::move(tokens_);
  }

 private:
  Token Take() { return tokenizer_.NextSignificant(); }

  std::expected<void, std::string> Add(const Token& token) {
    switch (token.kind) {
      case TokenKind::kNumber:
      case TokenKind::kString:
      case TokenKind::kDate: {
        auto value = LiteralValue(token);
        if (!value) return Fail(value.error());
        tokens_.push_back({ExpressionToken::Kind::kLiteral, {}, {}, *std::move(value)});
        return {};
      }
      case TokenKind::kName:
        AddWord(token);
        return {};
      case TokenKind::kTypeCharacter:
        if (tokens_.back().kind == ExpressionToken::Kind::kName) return {};
        break;
      case TokenKind::kOperator:
        return AddOperator(token);
      default:
        break;
    }
    return Fail("\"" + ToUtf8(token.text) + "\" is no part of an expression");
  }

  void AddWord(const Token& token) {
    if (std::exchange(behind_dot_, false)) {
      tokens_.back().name += u'.';
      tokens_.back().name += token.text;
      return;
    }
    auto lower = ToUtf8(LowerCase(token.text));
    if (IsOperatorWord(lower)) {
      tokens_.push_back({ExpressionToken::Kind::kOperator, std::move(lower), {}, {}});
    } else {
      tokens_.push_back({ExpressionToken::Kind::kName, {}, std::u16string(token.text), {}});
    }
  }

  std::expected<void, std::string> AddOperator(const Token& token) {
    if (token.IsOperator(u'.') && !tokens_.empty() &&
        tokens_.back().kind == ExpressionToken::Kind::kName) {
      behind_dot_ = true;
      return {};
    }
    constexpr std::u16string_view kOperators = u"()+-*/\\^&=<>";
    if (behind_dot_ || !kOperators.contains(token.text.front()))
      return Fail("\"" + ToUtf8(token.text) + "\" is no operator");
    tokens_.push_back({ExpressionToken::Kind::kOperator, ToUtf8(token.text), {}, {}});
    return {};
  }

  Tokenizer tokenizer_;
  std::vector<ExpressionToken> tokens_;
  bool behind_dot_ = false;
};

class Parser {
 public:
  Parser(std::vector<ExpressionToken> tokens, const NameLookup& lookup)
      : tokens_(std::move(tokens)), lookup_(lookup) {}

  Evaluated Parse() {
    Evaluated value = ParseLevel(0);
    if (value && position_ != tokens_.size()) return Fail("something stands behind the expression");
    return value;
  }

 private:
  [[nodiscard]] bool At(std::string_view operation) const {
    return position_ < tokens_.size() &&
           tokens_[position_].kind == ExpressionToken::Kind::kOperator &&
           tokens_[position_].operation == operation;
  }

  [[nodiscard]] std::string_view OperatorOf(std::size_t level) const {
    for (const std::string_view operation : kLevels[level])
      if (!operation.empty() && At(operation)) return operation;
    return {};
  }

  Evaluated ParseLevel(std::size_t level) {
    if (level == kNotLevel) return ParseNot();
    if (level == kMinusLevel) return ParseMinus();
    Evaluated left = ParseLevel(level + 1);
    while (left) {
      const std::string_view operation = OperatorOf(level);
      if (operation.empty()) break;
      ++position_;
      const Evaluated right = ParseLevel(level + 1);
      if (!right) return right;
      left = Apply(operation, *left, *right);
    }
    return left;
  }

  // Counts what stands inside each other, which goes onto the stack.
  class Depth {
   public:
    explicit Depth(int& depth) : depth_(++depth) {}
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    ~Depth() { --depth_; }
    [[nodiscard]] bool IsTooMuch() const { return depth_ > kMostInside; }

   private:
    static constexpr int kMostInside = 200;
    int& depth_;
  };

  Evaluated ParseNot() {
    if (!At("not")) return ParseLevel(kNotLevel + 1);
    ++position_;
    const Depth depth(depth_);
    if (depth.IsTooMuch()) return Fail("too complex");
    const Evaluated operand = ParseNot();
    if (!operand) return operand;
    const auto whole = AsWhole(*operand);
    if (!whole) return Fail(whole.error());
    return Fit(WiderWhole(*operand, *operand), ~*whole);
  }

  Evaluated ParseMinus() {
    const Depth depth(depth_);
    if (depth.IsTooMuch()) return Fail("too complex");
    if (At("+")) {
      ++position_;
      return ParseMinus();
    }
    if (!At("-")) return ParsePower();
    ++position_;
    const Evaluated operand = ParseMinus();
    if (!operand) return operand;
    return Arithmetic("-", Value::Integer(0), *operand);
  }

  Evaluated ParsePower() {
    Evaluated left = ParseOperand();
    while (left && At("^")) {
      ++position_;
      const Evaluated right = At("-") ? ParseMinus() : ParseOperand();
      if (!right) return right;
      left = Apply("^", *left, *right);
    }
    return left;
  }

  Evaluated ParseOperand() {
    if (position_ == tokens_.size()) return Fail("the expression ends too early");
    const ExpressionToken& token = tokens_[position_++];
    if (token.kind == ExpressionToken::Kind::kLiteral) return token.value;
    if (token.kind == ExpressionToken::Kind::kName) return ValueOfName(token.name);
    if (token.operation != "(")
      return Fail("\"" + token.operation + "\" where an operand is needed");
    const Depth depth(depth_);
    if (depth.IsTooMuch()) return Fail("too complex");
    Evaluated inner = ParseLevel(0);
    if (!inner) return inner;
    if (!At(")")) return Fail("a bracket is not closed");
    ++position_;
    return inner;
  }

  [[nodiscard]] Evaluated ValueOfName(std::u16string_view name) const {
    if (EqualIgnoringCase(name, u"True")) return Value::Integer(-1);
    if (EqualIgnoringCase(name, u"False")) return Value::Integer(0);
    return lookup_(name);
  }

  std::vector<ExpressionToken> tokens_;
  const NameLookup& lookup_;
  std::size_t position_ = 0;
  int depth_ = 0;
};

}  // namespace

Value Value::Integer(std::int64_t value) {
  return {.type = Type::kInteger, .whole = value, .real = 0, .text = {}};
}

Value Value::Long(std::int64_t value) {
  return {.type = Type::kLong, .whole = value, .real = 0, .text = {}};
}

Value Value::LongLong(std::int64_t value) {
  return {.type = Type::kLongLong, .whole = value, .real = 0, .text = {}};
}

Value Value::Double(double value) {
  return {.type = Type::kDouble, .whole = 0, .real = value, .text = {}};
}

Value Value::String(std::u16string value) {
  return {.type = Type::kString, .whole = 0, .real = 0, .text = std::move(value)};
}

Evaluated Evaluate(std::u16string_view text, const NameLookup& lookup) {
  auto tokens = Lexer(text).Lex();
  if (!tokens) return Fail(tokens.error());
  return Parser(std::move(*tokens), lookup).Parse();
}

Evaluated ConvertTo(std::u16string_view type_name, const Value& value) {
  const auto is = [type_name](std::u16string_view name) {
    return EqualIgnoringCase(type_name, name);
  };
  if (type_name.empty() || is(u"Variant")) return value;
  if (is(u"String"))
    return value.type == Value::Type::kString ? Evaluated(value) : Fail("a number for a text");
  if (is(u"Double") || is(u"Single") || is(u"Currency") || is(u"Date")) {
    if (value.type == Value::Type::kString) return Fail("a text where a number is needed");
    return Value::Double(AsReal(value));
  }
  const auto whole = AsWhole(value);
  if (!whole) return Fail(whole.error());
  if (is(u"Integer")) return Fit(Value::Type::kInteger, *whole);
  if (is(u"Long")) return Fit(Value::Type::kLong, *whole);
  if (is(u"LongLong") || is(u"LongPtr")) return Value::LongLong(*whole);
  if (is(u"Boolean")) return Value::Integer(*whole == 0 ? 0 : -1);
  if (is(u"Byte"))
    return *whole >= 0 && *whole <= 255 ? Evaluated(Value::Integer(*whole)) : Fail("overflow");
  return Fail("no constant can be of the type " + ToUtf8(type_name));
}

}  // namespace declarium::vb
