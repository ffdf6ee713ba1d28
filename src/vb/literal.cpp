#include "vb/literal.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

#include "text/text.h"

namespace declarium::vb {
namespace {

Evaluated DecimalValue(std::string digits, char16_t suffix) {
  for (char& digit : digits)
    if (digit == 'D' || digit == 'd') digit = 'E';
  double value = 0;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, value);
  // "1." is a number of the language, but not of from_chars in every library.
  const bool whole_text = read.ptr == end || (read.ptr + 1 == end && *read.ptr == '.');
  if (read.ec != std::errc() || !whole_text) return std::unexpected("not a number: " + digits);
  if (suffix == u'#' || suffix == u'!' || suffix == u'@') return Value::Double(value);
  if (suffix == u'^') {
    std::int64_t whole = 0;
    if (std::from_chars(digits.data(), end, whole).ptr != end) return std::unexpected("overflow");
    return Value::LongLong(whole);
  }
  if (digits.find_first_of(".Ee") != std::string::npos) return Value::Double(value);
  const bool fits_integer = value <= std::numeric_limits<std::int16_t>::max();
  const bool fits_long = value <= std::numeric_limits<std::int32_t>::max();
  if ((suffix == u'&' && !fits_long) || (suffix == u'%' && !fits_integer))
    return std::unexpected("overflow");
  if (!fits_long) return Value::Double(value);
  const auto whole = static_cast<std::int64_t>(value);
  return suffix == u'&' || !fits_integer ? Value::Long(whole) : Value::Integer(whole);
}

Evaluated RadixValue(const std::string& digits, int radix, char16_t suffix) {
  std::uint64_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, value, radix);
  if (read.ec != std::errc() || read.ptr != end) return std::unexpected("not a number: " + digits);
  if (suffix == u'^') return Value::LongLong(static_cast<std::int64_t>(value));
  if (value > std::numeric_limits<std::uint32_t>::max())
    return std::unexpected("not a 32-bit number");
  if (suffix != u'&' && value <= std::numeric_limits<std::uint16_t>::max())
    return Value::Integer(static_cast<std::int16_t>(value));
  return Value::Long(static_cast<std::int32_t>(value));
}

Evaluated NumberValue(std::u16string_view text) {
  constexpr std::u16string_view kSuffixes = u"%&!#@^";
  char16_t suffix = 0;
  if (text.size() > 1 && kSuffixes.contains(text.back())) {
    suffix = text.back();
    text.remove_suffix(1);
  }
  if (text.front() != u'&') return DecimalValue(ToUtf8(text), suffix);
  text.remove_prefix(1);
  const char16_t mark = text.empty() ? u'\0' : LowerCase(text.front());
  if (mark == u'h' || mark == u'o') text.remove_prefix(1);
  return RadixValue(ToUtf8(text), mark == u'h' ? 16 : 8, suffix);
}

Evaluated StringValue(std::u16string_view text) {
  if (text.size() < 2 || text.back() != u'"') return std::unexpected("a text without its end");
  return Value::String(Replace(text.substr(1, text.size() - 2), u"\"\"", u"\""));
}

}  // namespace

Evaluated LiteralValue(const Token& token) {
  if (token.kind == TokenKind::kNumber) return NumberValue(token.text);
  if (token.kind == TokenKind::kString) return StringValue(token.text);
  return std::unexpected("a date");
}

}  // namespace declarium::vb
