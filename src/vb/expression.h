// Evaluates constant expressions as the host language does, with its literals, operators, types and
// overflow.
//
//   literals    10 (Integer up to 32767, then Long, then Double), 1.5, &H10 and &O17 (Integer up to
//               16 bits, so &H8000 is -32768; Long up to 32 bits), "text" with "" for a quote;
//               a suffix % & ^ gives Integer, Long, LongLong, one of ! # @ Double: &H8000& is 32768
//   operators   ^  -x  * /  \  Mod  + -  &  = <> < > <= >=  Not  And  Or  Xor  Eqv  Imp
//               in this order of precedence, those of one level from left to right
//   names       True, False, and as the caller resolves them
//
// Integer and Long arithmetic that leaves its type is an overflow error, as in the language: the
// wider operand decides the type, so 32767 + 1 fails and 32767 + 1& does not.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace declarium::vb {

struct Value {
  enum class Type { kInteger, kLong, kLongLong, kDouble, kString };
  Type type = Type::kInteger;
  std::int64_t whole = 0;  // kInteger, kLong, kLongLong
  double real = 0;         // kDouble
  std::u16string text;     // kString

  [[nodiscard]] static Value Integer(std::int64_t value);
  [[nodiscard]] static Value Long(std::int64_t value);
  [[nodiscard]] static Value LongLong(std::int64_t value);
  [[nodiscard]] static Value Double(double value);
  [[nodiscard]] static Value String(std::u16string value);
  friend bool operator==(const Value&, const Value&) = default;
};

using Evaluated = std::expected<Value, std::string>;

// The value of a constant's name, which may be qualified ("Library.Name"), or the reason why it has
// none.
using NameLookup = std::function<Evaluated(std::u16string_view name)>;

// The value of `text`; the reason in words when the language would refuse it.
[[nodiscard]] Evaluated Evaluate(std::u16string_view text, const NameLookup& lookup);

// What a constant declared "As type_name" holds when its expression has `value`; an empty type name
// or Variant keeps the expression's own type. Fails on overflow and on a text for a number.
[[nodiscard]] Evaluated ConvertTo(std::u16string_view type_name, const Value& value);

}  // namespace declarium::vb
