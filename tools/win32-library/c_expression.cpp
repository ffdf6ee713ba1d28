#include "c_expression.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>

namespace declarium::win32_library {
namespace {

constexpr std::string_view kAnsiOrWide = "__MINGW_NAME_AW";

// A part of the expression: its value, when no constant is named in it, or its text.
struct Part {
  enum class Shape { kOperand, kSum, kBitwise, kNot };
  std::optional<std::int64_t> value;
  std::string text;
  Shape shape = Shape::kOperand;
  std::string operation;  // of kSum and kBitwise
  bool hexadecimal = false;
};

std::optional<std::int64_t> LiteralValue(std::string_view text) {
  while (!text.empty() && std::string_view("uUlL").find(text.back()) != std::string_view::npos)
    text.remove_suffix(1);
  int radix = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    radix = 16;
    text.remove_prefix(2);
  } else if (text.size() > 1 && text.front() == '0') {
    radix = 8;
  }
  std::uint64_t value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value, radix);
  const bool whole = read.ec == std::errc() && read.ptr == text.data() + text.size();
  if (!whole || text.empty() || value > std::numeric_limits<std::uint32_t>::max())
    return std::nullopt;
  return static_cast<std::int64_t>(value);
}

bool IsHexadecimal(std::string_view text) {
  return text.starts_with("0x") || text.starts_with("0X");
}

bool IsWholeNumberType(std::string_view word) {
  static const std::set<std::string_view> words = {
      "int",    "long",    "short", "unsigned", "signed", "DWORD",   "LONG",       "ULONG",
      "UINT",   "INT",     "WORD",  "USHORT",   "SHORT",  "HRESULT", "NTSTATUS",   "DWORD32",
      "UINT32", "ULONG32", "BYTE",  "UCHAR",    "BOOL",   "SCODE",   "ACCESS_MASK"};
  return words.contains(word);
}

std::optional<std::int64_t> Fold(std::string_view operation, std::int64_t a, std::int64_t b) {
  if (operation == "+") return a + b;
  if (operation == "-") return a - b;
  if (operation == "*") return a * b;
  if (operation == "|") return a | b;
  if (operation == "&") return a & b;
  if (operation == "^") return a ^ b;
  if (operation == "<<" && b >= 0 && b < 32) return a << b;
  if (operation == ">>" && b >= 0 && b < 32) return a >> b;
  if (operation == "/" && b != 0) return a / b;
  if (operation == "%" && b != 0) return a % b;
  return std::nullopt;
}

constexpr std::array<std::array<std::string_view, 3>, 6> kLevels = {
    {{"|"}, {"^"}, {"&"}, {"<<", ">>"}, {"+", "-"}, {"*", "/", "%"}}};

std::string WordFor(std::string_view operation) {
  if (operation == "|") return "Or";
  if (operation == "&") return "And";
  if (operation == "^") return "Xor";
  return std::string(operation);
}

std::string TextOf(const Part& part) {
  if (!part.value) return part.text;
  const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(*part.value));
  return NumberLiteral(number, part.hexadecimal ? Notation::kHexadecimal : Notation::kDecimal);
}

class Rewriter {
 public:
  Rewriter(const std::vector<Token>& tokens, const IsConstant& is_constant)
      : tokens_(tokens), is_constant_(is_constant) {}

  std::optional<std::string> Rewrite() {
    const auto part = ParseLevel(0);
    if (!part || position_ != tokens_.size() || part->value) return std::nullopt;
    return part->text;
  }

 private:
  [[nodiscard]] std::string_view Next(std::size_t ahead = 0) const {
    return position_ + ahead < tokens_.size() ? std::string_view(tokens_[position_ + ahead].text)
                                              : std::string_view();
  }

  std::optional<Part> ParseLevel(std::size_t level) {
    if (level == kLevels.size()) return ParseUnary();
    auto left = ParseLevel(level + 1);
    while (left && !Next().empty() &&
           std::ranges::find(kLevels[level], Next()) != kLevels[level].end()) {
      const std::string operation(Next());
      ++position_;
      const auto right = ParseLevel(level + 1);
      if (!right) return std::nullopt;
      left = Combine(operation, *left, *right);
    }
    return left;
  }

  static std::optional<Part> Combine(const std::string& operation, const Part& left,
                                     const Part& right) {
    Part result;
    result.hexadecimal = left.hexadecimal || right.hexadecimal;
    if (left.value && right.value) {
      result.value = Fold(operation, *left.value, *right.value);
      return result.value ? std::optional(result) : std::nullopt;
    }
    const bool sum = operation == "+" || operation == "-";
    if (!sum && operation != "|" && operation != "&" && operation != "^") return std::nullopt;
    result.shape = sum ? Part::Shape::kSum : Part::Shape::kBitwise;
    result.operation = operation;
    result.text =
        Side(left, result, true) + " " + WordFor(operation) + " " + Side(right, result, false);
    return result;
  }

  // One side of an operation, in brackets unless its own operation binds tighter, or is the same
  // one on the left.
  static std::string Side(const Part& side, const Part& whole, bool left) {
    std::string text = TextOf(side);
    if (side.value) return text.starts_with('-') ? "(" + text + ")" : text;
    if (side.shape == Part::Shape::kOperand) return text;
    const bool tighter =
        whole.shape == Part::Shape::kBitwise && side.shape != Part::Shape::kBitwise;
    const bool same = left && side.shape == whole.shape &&
                      (side.shape == Part::Shape::kSum || side.operation == whole.operation);
    return tighter || same ? text : "(" + text + ")";
  }

  std::optional<Part> ParseUnary() {
    const std::string_view sign = Next();
    if (sign != "-" && sign != "~" && sign != "+") return ParseOperand();
    ++position_;
    auto operand = ParseUnary();
    if (!operand || sign == "+") return operand;
    if (operand->value) {
      operand->value = sign == "-" ? -*operand->value : ~*operand->value;
      return operand;
    }
    if (sign == "-") return std::nullopt;
    const bool simple = operand->shape == Part::Shape::kOperand;
    Part result;
    result.shape = Part::Shape::kNot;
    result.text = simple ? "Not " + operand->text : "Not (" + operand->text + ")";
    return result;
  }

  bool SkipCast() {
    std::size_t end = 1;
    while (IsWholeNumberType(Next(end))) ++end;
    if (Next() != "(" || end == 1 || Next(end) != ")") return false;
    position_ += end + 1;
    return true;
  }

  std::optional<Part> ParseOperand() {
    if (SkipCast()) return ParseUnary();
    if (position_ == tokens_.size()) return std::nullopt;
    const Token& token = tokens_[position_++];
    if (token.text == "(") {
      auto inner = ParseLevel(0);
      if (!inner || Next() != ")") return std::nullopt;
      ++position_;
      return inner;
    }
    if (token.text == kAnsiOrWide) return ParseAnsiName();
    Part part;
    part.hexadecimal = IsHexadecimal(token.text);
    if (token.kind == TokenKind::kLiteral) {
      part.value = LiteralValue(token.text);
      return part.value ? std::optional(part) : std::nullopt;
    }
    if (token.kind != TokenKind::kIdentifier || !is_constant_(token.text)) return std::nullopt;
    part.text = token.text;
    return part;
  }

  // The ANSI one of two constants: __MINGW_NAME_AW(X) is XA.
  std::optional<Part> ParseAnsiName() {
    if (Next() != "(" || Next(2) != ")") return std::nullopt;
    Part part;
    part.text = std::string(Next(1)) + "A";
    position_ += 3;
    return is_constant_(part.text) ? std::optional(part) : std::nullopt;
  }

  const std::vector<Token>& tokens_;
  const IsConstant& is_constant_;
  std::size_t position_ = 0;
};

}  // namespace

std::optional<std::string> RewriteExpression(const std::vector<Token>& tokens,
                                             const IsConstant& is_constant) {
  return Rewriter(tokens, is_constant).Rewrite();
}

Notation NotationOf(const std::vector<Token>& tokens) {
  const bool hexadecimal =
      std::ranges::any_of(tokens, [](const Token& token) { return IsHexadecimal(token.text); });
  return hexadecimal ? Notation::kHexadecimal : Notation::kDecimal;
}

std::string NumberLiteral(std::int32_t value, Notation notation) {
  if (notation == Notation::kDecimal && value != std::numeric_limits<std::int32_t>::min())
    return std::to_string(value);
  const auto bits = static_cast<std::uint32_t>(value);
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "&H%X", static_cast<unsigned>(bits));
  std::string text = digits.data();
  if (bits >= 0x8000 && bits <= 0xFFFF) text += '&';
  return text;
}

}  // namespace declarium::win32_library
