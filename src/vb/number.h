// Number reading and printing as the host language's Val and CStr do it, with "." as the decimal
// point whatever the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace declarium {

// The value of the longest numeric beginning of `text`, 0 when there is none. Blanks, tabs and line
// feeds are removed first, so "&H10 And 1" reads &H10A.
//   decimal   sign, digits, ".", digits, exponent marked by E or D
//   &H, &O    (either case) up to FFFF a 16-bit signed value, up to 32 bits a 32-bit signed value;
//             a directly following "&" makes it 32-bit, so &HFFFF is -1 and &HFFFF& is 65535;
//             beyond 32 bits the unsigned value. A sign before "&" gives 0.
// No value when the number is too large for a double.
[[nodiscard]] std::optional<double> Val(std::u16string_view text);

// `value` in 15 significant digits: plain with up to 15 digits before or behind the point ("0.5",
// "100"), otherwise with an exponent of at least two digits ("1E+15"). `value` must be finite.
[[nodiscard]] std::u16string NumberText(double value);

// NumberText of Val; empty optional when Val has no value.
[[nodiscard]] std::optional<std::u16string> ValText(std::u16string_view text);

// Whether `text` is exactly the text of its own numeric value ("100" and "1.5" are, "10#" and "&H1"
// are not).
[[nodiscard]] bool IsOwnNumberText(std::u16string_view text);

}  // namespace declarium
