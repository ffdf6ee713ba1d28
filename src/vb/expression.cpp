#include "vb/expression.h"

#include <array>
#include <cmath>
#include <limits>

#include "vb/expression_lexer.h"
#include "vb/name.h"

namespace declarium::vb {
namespace {

std::unexpected<std::string> Fail(std::string reason) {
  return std::unexpected(std::move(reason));
}

double AsReal(const Value& value) {
  return value.type == Value::Type::kDouble ? value.real : static_cast<double>(value.whole);
}

// Halves go to the even neighbour.
std::expected<std::int64_t, std::string> AsWhole(const Value& value) {
  if (value.type == Value::Type::kString) return Fail("a text where a number is needed");
  if (value.type != Value::Type::kDouble) return value.whole;
  const double rounded = std::nearbyint(value.real);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max())
    return Fail("overflow");
  return static_cast<std::int64_t>(rounded);
}

Evaluated Fit(Value::Type type, std::int64_t whole) {
  if (type == Value::Type::kInteger && (whole < std::numeric_limits<std::int16_t>::min() ||
                                        whole > std::numeric_limits<std::int16_t>::max()))
    return Fail("overflow");
  if (whole < std::numeric_limits<std::int32_t>::min() ||
      whole > std::numeric_limits<std::int32_t>::max())
    return Fail("overflow");
  return type == Value::Type::kInteger ? Value::Integer(whole) : Value::Long(whole);
}

Value::Type WiderWhole(const Value& left, const Value& right) {
  const bool integers = left.type == Value::Type::kInteger && right.type == Value::Type::kInteger;
  return integers ? Value::Type::kInteger : Value::Type::kLong;
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
  const Value::Type type = WiderWhole(left, right);
  if (operation == "+") return Fit(type, left.whole + right.whole);
  if (operation == "-") return Fit(type, left.whole - right.whole);
  return Fit(type, left.whole * right.whole);
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
           tokens_[position_].text == operation;
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

  Evaluated ParseNot() {
    if (!At("not")) return ParseLevel(kNotLevel + 1);
    ++position_;
    const Evaluated operand = ParseNot();
    if (!operand) return operand;
    const auto whole = AsWhole(*operand);
    if (!whole) return Fail(whole.error());
    return Fit(WiderWhole(*operand, *operand), ~*whole);
  }

  Evaluated ParseMinus() {
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
    if (token.kind == ExpressionToken::Kind::kName) return lookup_(token.text);
    if (token.text != "(") return Fail("\"" + token.text + "\" where an operand is needed");
    Evaluated inner = ParseLevel(0);
    if (!inner) return inner;
    if (!At(")")) return Fail("a bracket is not closed");
    ++position_;
    return inner;
  }

  std::vector<ExpressionToken> tokens_;
  const NameLookup& lookup_;
  std::size_t position_ = 0;
};

}  // namespace

Value Value::Integer(std::int64_t value) {
  return {.type = Type::kInteger, .whole = value, .real = 0, .text = ""};
}

Value Value::Long(std::int64_t value) {
  return {.type = Type::kLong, .whole = value, .real = 0, .text = ""};
}

Value Value::Double(double value) {
  return {.type = Type::kDouble, .whole = 0, .real = value, .text = ""};
}

Value Value::String(std::string value) {
  return {.type = Type::kString, .whole = 0, .real = 0, .text = std::move(value)};
}

Evaluated Evaluate(std::string_view text, const NameLookup& lookup) {
  auto tokens = LexExpression(text);
  if (!tokens) return Fail(tokens.error());
  return Parser(std::move(*tokens), lookup).Parse();
}

Evaluated ConvertTo(std::string_view type_name, const Value& value) {
  const std::string type = Lower(type_name);
  if (type.empty()) return value;
  if (type == "string")
    return value.type == Value::Type::kString ? Evaluated(value) : Fail("a number for a text");
  if (type == "double") {
    if (value.type == Value::Type::kString) return Fail("a text where a number is needed");
    return Value::Double(AsReal(value));
  }
  const auto whole = AsWhole(value);
  if (!whole) return Fail(whole.error());
  if (type == "integer") return Fit(Value::Type::kInteger, *whole);
  if (type == "long") return Fit(Value::Type::kLong, *whole);
  return Fail("no constant can be of the type " + std::string(type_name));
}

}  // namespace declarium::vb
