#include "runtime/NumberText.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace vela {

namespace {

constexpr double kPlainFrom = 1e-5;    // plain notation from here ...
constexpr double kPlainBelow = 1e15;   // ... to below here

// Numbers up to here, and these powers of ten, are doubles without rounding.
constexpr uint64_t kExactWholes = uint64_t{1} << 53;
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int64_t kLargestPower = 22;

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

// What the C library calls white space: the blanks that may stand before a number.
bool IsBlank(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

std::string_view WithoutLeadingBlanks(std::string_view text)
{
    size_t start = 0;
    while (start < text.size() && IsBlank(text[start]))
        start++;
    return text.substr(start);
}

size_t DigitsFrom(std::string_view text, size_t start)
{
    size_t end = start;
    while (end < text.size() && IsDigit(text[end]))
        end++;
    return end - start;
}

// Takes an optional sign off the text.
bool TakeSign(std::string_view* text)
{
    if (text->empty() || ((*text)[0] != '-' && (*text)[0] != '+'))
        return false;
    const bool isNegative = (*text)[0] == '-';
    text->remove_prefix(1);
    return isNegative;
}

// The shortest plain decimal text; to_chars knows it, in every locale.
string PlainText(double number)
{
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
    return string(text, static_cast<size_t>(result.ptr - text), kEncodingASCII);
}

// The shortest text with an exponent: a point in the mantissa always, no zeros before the exponent.
string ExponentText(double number)
{
    char text[64];
    const auto result =
        std::to_chars(text, text + sizeof text, number, std::chars_format::scientific);
    const std::string_view whole(text, static_cast<size_t>(result.ptr - text));
    const size_t exponentAt = whole.find('e');
    const std::string_view mantissa = whole.substr(0, exponentAt);
    std::string_view exponent = whole.substr(exponentAt + 2);
    while (exponent.size() > 1 && exponent[0] == '0')
        exponent.remove_prefix(1);

    string made(mantissa, kEncodingASCII);
    if (mantissa.find('.') == std::string_view::npos)
        made += ".0";
    made += whole.substr(exponentAt, 2);
    made += exponent;
    return made;
}

// The bytes at the start of text, which has no sign, that are a decimal number with optional
// fraction and exponent; 0 when there is no digit.
size_t NumberSize(std::string_view text)
{
    const size_t whole = DigitsFrom(text, 0);
    size_t end = whole;
    size_t fraction = 0;
    if (end < text.size() && text[end] == '.') {
        fraction = DigitsFrom(text, end + 1);
        end += 1 + fraction;
    }
    if (whole + fraction == 0)
        return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        size_t digitsAt = end + 1;
        if (digitsAt < text.size() && (text[digitsAt] == '-' || text[digitsAt] == '+'))
            digitsAt++;
        const size_t digits = DigitsFrom(text, digitsAt);
        if (digits > 0)
            end = digitsAt + digits;
    }
    return end;
}

// The exponent written in number ("12e-7": -7), saturated far outside a double's range but able to
// meet any count of digits.
int64_t WrittenExponent(std::string_view number)
{
    constexpr int64_t kLimit = std::numeric_limits<int64_t>::max() / 4;
    const size_t at = number.find_first_of("eE");
    if (at == std::string_view::npos)
        return 0;
    std::string_view digits = number.substr(at + 1);
    const bool isNegative = TakeSign(&digits);
    int64_t exponent = 0;
    for (const char digit : digits) {
        exponent = exponent * 10 + (digit - '0');
        if (exponent > kLimit / 10)
            exponent = kLimit / 10;
    }
    return isNegative ? -exponent : exponent;
}

// The value of a number whose digits and power of ten are doubles without rounding: one operation on them rounds once, and
// so correctly. False for any other. from_chars would do the same, but on 32-bit x86 with the processor's wider registers,
// and so round twice.
bool FewDigitsToDouble(std::string_view number, double* value)
{
    uint64_t digits = 0;
    int64_t power = WrittenExponent(number);
    bool isFraction = false;
    for (const char byte : number.substr(0, number.find_first_of("eE"))) {
        if (byte == '.') {
            isFraction = true;
            continue;
        }
        digits = digits * 10 + static_cast<uint64_t>(byte - '0');
        if (digits > kExactWholes)
            return false;
        power -= isFraction ? 1 : 0;
    }
    if (power < -kLargestPower || power > kLargestPower)
        return false;
    const double whole = static_cast<double>(digits);
    *value = power < 0 ? whole / kExactPowers[-power] : whole * kExactPowers[power];
    return true;
}

// The same for digits with at most one point among or behind them, as nearly all numbers are written, in one pass over the text.
bool PlainDecimalToDouble(std::string_view text, double* value)
{
    constexpr size_t kLongest = 16;   // fifteen digits and a point
    if (text.empty() || text.size() > kLongest || !IsDigit(text[0]))
        return false;
    uint64_t digits = 0;
    size_t point = text.size();
    for (size_t i = 0; i < text.size(); i++) {
        if (IsDigit(text[i]))
            digits = digits * 10 + static_cast<uint64_t>(text[i] - '0');
        else if (text[i] == '.' && point == text.size())
            point = i;
        else
            return false;
    }
    const size_t fraction = point == text.size() ? 0 : text.size() - point - 1;
    if (digits > kExactWholes)
        return false;
    *value = static_cast<double>(digits) / kExactPowers[fraction];
    return true;
}

// Whether a number that no double can hold is too large, rather than too small. It has a digit
// other than 0.
bool IsTooLarge(std::string_view number)
{
    const std::string_view mantissa = number.substr(0, number.find_first_of("eE"));
    const size_t firstDigit = mantissa.find_first_of("123456789");
    size_t point = mantissa.find('.');
    if (point == std::string_view::npos)
        point = mantissa.size();
    const int64_t magnitude = static_cast<int64_t>(point) - static_cast<int64_t>(firstDigit);
    return magnitude + WrittenExponent(number) > 0;
}

}   // namespace

string IntegerText(int64_t number)
{
    char text[24];
    const auto result = std::to_chars(text, text + sizeof text, number);
    return string(text, static_cast<size_t>(result.ptr - text), kEncodingASCII);
}

string DoubleText(double number)
{
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number < 0 ? "-inf" : "inf";
    const double magnitude = std::fabs(number);
    const bool isPlain = magnitude == 0 || (magnitude >= kPlainFrom && magnitude < kPlainBelow);
    return isPlain ? PlainText(number) : ExponentText(number);
}

int32_t TextToInteger(std::string_view text)
{
    text = WithoutLeadingBlanks(text);
    const bool isNegative = TakeSign(&text);
    const int64_t limit = isNegative ? -static_cast<int64_t>(INT32_MIN) : INT32_MAX;
    int64_t magnitude = 0;
    for (const char byte : text) {
        if (!IsDigit(byte))
            break;
        magnitude = magnitude * 10 + (byte - '0');
        if (magnitude >= limit) {
            magnitude = limit;
            break;
        }
    }
    return static_cast<int32_t>(isNegative ? -magnitude : magnitude);
}

double TextToDouble(std::string_view text)
{
    double number = 0.0;
    if (PlainDecimalToDouble(text, &number))
        return number;
    text = WithoutLeadingBlanks(text);
    const bool isNegative = TakeSign(&text);
    text = text.substr(0, NumberSize(text));
    if (text.empty())
        return 0.0;
    if (FewDigitsToDouble(text, &number))
        return isNegative ? -number : number;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range)
        number = IsTooLarge(text) ? std::numeric_limits<double>::infinity() : 0.0;
    return isNegative ? -number : number;
}

int32_t DoubleToInteger(double number)
{
    if (std::isnan(number))
        return 0;
    if (number >= static_cast<double>(INT32_MAX))
        return INT32_MAX;
    if (number <= static_cast<double>(INT32_MIN))
        return INT32_MIN;
    return static_cast<int32_t>(number);
}

}   // namespace vela
