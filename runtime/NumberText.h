#pragma once

#include <cstdint>
#include <string_view>

#include "runtime/String.h"

namespace vela {

// Numbers to text and back, independent of the process's locale. All texts made here are ASCII.

[[nodiscard]] string IntegerText(int64_t number);

// The shortest decimal text that reads back as the same double. Integral values print without a
// fraction ("5", "-20"). Plain notation for 1e-5 <= |x| < 1e15; outside it an exponent, always with
// a decimal point in the mantissa ("1.0e+300", "2.5e-7"), so that the text is a Double literal in a
// statement. "nan", "inf", "-inf".
[[nodiscard]] string DoubleText(double number);

// Leading blanks, one optional sign, decimal digits; what follows is ignored; no digits give 0.
// Saturates at the ends of the 32-bit range.
[[nodiscard]] int32_t TextToInteger(std::string_view text);

// The longest leading decimal number, after blanks: sign, digits, fraction, exponent. None gives
// 0.0. Too large gives an infinity, too small zero.
[[nodiscard]] double TextToDouble(std::string_view text);

// Truncates toward zero and saturates at the ends of the 32-bit range; not-a-number gives 0.
[[nodiscard]] int32_t DoubleToInteger(double number);

}   // namespace vela
