#include "vb/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "text/text.h"

namespace declarium {
namespace {

constexpr int kSignificantDigits = 15;

int DigitValue(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return 99;
}

// `digits` stands behind "&H" or "&O".
std::optional<double> ReadRadix(std::u16string_view digits, int radix) {
  double value = 0;
  std::size_t length = 0;
  for (; length < digits.size() && DigitValue(digits[length]) < radix; ++length) {
    value = value * radix + DigitValue(digits[length]);
  }
  const bool is_long = length < digits.size() && digits[length] == u'&';
  if (value <= 0xFFFF && !is_long) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
  }
  if (value <= 0xFFFFFFFF) return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::size_t CountDigits(std::u16string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
}

// The parts of the longest decimal number at the start of a text.
struct Decimal {
  bool negative = false;
  std::string whole;
  std::string fraction;
  std::string exponent;  // with its sign, empty when there is none

  [[nodiscard]] bool IsZero() const {
    return (whole + fraction).find_first_not_of('0') == std::string::npos;
  }
  // Whether the number is at least 1; distinguishes an overflow from an underflow.
  [[nodiscard]] bool IsLarge() const {
    const auto first_digit = (whole + fraction).find_first_not_of('0');
    const auto places = static_cast<long>(whole.size()) - static_cast<long>(first_digit);
    if (exponent.empty()) return places > 0;
    long power = 0;
    const auto* start = exponent.data() + (exponent.front() == '+' ? 1 : 0);
    if (std::from_chars(start, exponent.data() + exponent.size(), power).ec != std::errc()) {
      return exponent.front() == '+';
    }
    return places + power > 0;
  }
};

std::string Narrow(std::u16string_view digits) {
  return {digits.begin(), digits.end()};
}

Decimal ReadDecimal(std::u16string_view text) {
  Decimal number;
  if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) {
    number.negative = text.front() == u'-';
    text.remove_prefix(1);
  }
  number.whole = Narrow(text.substr(0, CountDigits(text)));
  text.remove_prefix(number.whole.size());
  if (!text.empty() && text.front() == u'.') {
    number.fraction = Narrow(text.substr(1, CountDigits(text.substr(1))));
    text.remove_prefix(1 + number.fraction.size());
  }
  if (number.whole.empty() && number.fraction.empty()) return number;
  if (!text.empty() && (LowerCase(text.front()) == u'e' || LowerCase(text.front()) == u'd')) {
    text.remove_prefix(1);
    std::string sign = "+";
    if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) {
      sign = text.front() == u'-' ? "-" : "+";
      text.remove_prefix(1);
    }
    if (const auto digits = CountDigits(text); digits > 0) {
      number.exponent = sign + Narrow(text.substr(0, digits));
    }
  }
  return number;
}

std::u16string Widen(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

}  // namespace

std::optional<double> Val(std::u16string_view text) {
  const auto packed = RemoveUnits(text, u" \t\n");
  const std::u16string_view number_text = packed;
  if (number_text.size() >= 2 && number_text[0] == u'&') {
    if (LowerCase(number_text[1]) == u'h') return ReadRadix(number_text.substr(2), 16);
    if (LowerCase(number_text[1]) == u'o') return ReadRadix(number_text.substr(2), 8);
  }
  const auto number = ReadDecimal(number_text);
  if (number.IsZero()) return 0.0;

  auto digits = "0" + number.whole + "." + number.fraction + "0";
  if (!number.exponent.empty()) digits += "e" + number.exponent;
  double value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    if (number.IsLarge()) return std::nullopt;
    value = 0;
  }
  return number.negative ? -value : value;
}

std::u16string NumberText(double value) {
  if (value == 0) return u"0";
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                 std::chars_format::scientific, kSignificantDigits - 1)
                       .ptr;
  std::string_view scientific(buffer, static_cast<std::size_t>(end - buffer));
  std::string result;
  if (scientific.front() == '-') {
    result = "-";
    scientific.remove_prefix(1);
  }
  const auto mark = scientific.find('e');
  int exponent = 0;
  const auto* exponent_start = scientific.data() + mark + (scientific[mark + 1] == '+' ? 2 : 1);
  std::from_chars(exponent_start, end, exponent);
  std::string digits(1, scientific[0]);
  digits += scientific.substr(2, mark - 2);
  digits.erase(digits.find_last_not_of('0') + 1);

  const int count = static_cast<int>(digits.size());
  if (exponent >= 0 && exponent < kSignificantDigits) {
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() < whole) digits.append(whole - digits.size(), '0');
    result += digits.substr(0, whole);
    if (digits.size() > whole) result += "." + digits.substr(whole);
  } else if (exponent < 0 && count - exponent - 1 <= kSignificantDigits) {
    result += "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  } else {
    result += digits.substr(0, 1);
    if (count > 1) result += "." + digits.substr(1);
    const auto magnitude = std::to_string(exponent < 0 ? -exponent : exponent);
    result += exponent < 0 ? "E-" : "E+";
    result += (magnitude.size() < 2 ? "0" : "") + magnitude;
  }
  return Widen(result);
}

std::optional<std::u16string> ValText(std::u16string_view text) {
  const auto value = Val(text);
  if (!value) return std::nullopt;
  return NumberText(*value);
}

bool IsOwnNumberText(std::u16string_view text) {
  // Most tokens are names; no name's text starts like a printed number.
  if (text.empty() || !(IsDigit(text.front()) || text.front() == u'-')) return false;
  return ValText(text) == text;
}

}  // namespace declarium
