#include "shell/FieldTypes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "runtime/NumberText.h"

namespace vela::shell {

namespace {

constexpr size_t kExactDigits = 17;   // significant digits that tell doubles apart
constexpr double kWholeNumberLimit = 9007199254740992;   // 2^53: all below are exact

enum Candidate : unsigned {
    kInteger = 1,
    kDouble = 2,
    kBoolean = 4,
    kDate = 8,
    kTime = 16,
    kTimestamp = 32,
};

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

// Takes the digits at the start of text away and returns them.
std::string_view TakeDigits(std::string_view* text)
{
    size_t count = 0;
    while (count < text->size() && IsDigit((*text)[count]))
        count++;
    const std::string_view digits = text->substr(0, count);
    text->remove_prefix(count);
    return digits;
}

bool TakeByte(std::string_view* text, char byte)
{
    if (!text->starts_with(byte))
        return false;
    text->remove_prefix(1);
    return true;
}

// The parts of a decimal number.
struct Decimal {
    bool isNegative = false;
    std::string_view whole;
    std::string_view fraction;
    bool hasPoint = false;
    bool hasExponent = false;
};

bool ParseDecimal(std::string_view text, Decimal* decimal)
{
    decimal->isNegative = TakeByte(&text, '-');
    decimal->whole = TakeDigits(&text);
    decimal->hasPoint = TakeByte(&text, '.');
    if (decimal->hasPoint)
        decimal->fraction = TakeDigits(&text);
    if (decimal->whole.empty() && decimal->fraction.empty())
        return false;
    decimal->hasExponent = TakeByte(&text, 'e') || TakeByte(&text, 'E');
    if (decimal->hasExponent) {
        if (!TakeByte(&text, '-'))
            TakeByte(&text, '+');
        if (TakeDigits(&text).empty())
            return false;
    }
    return text.empty();
}

bool HasLeadingZero(const Decimal& decimal)
{
    return decimal.whole.size() > 1 && decimal.whole[0] == '0';
}

bool IsWholeNumber(const Decimal& decimal)
{
    return !decimal.hasPoint && !decimal.hasExponent;
}

// Any sign and leading zeros, when the number fits.
bool ParseInteger(std::string_view text, int32_t* number)
{
    Decimal decimal;
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    if (!ParseDecimal(text, &decimal) || !IsWholeNumber(decimal))
        return false;
    int64_t magnitude = 0;
    for (const char digit : decimal.whole) {
        magnitude = magnitude * 10 + (digit - '0');
        if (magnitude > int64_t{std::numeric_limits<int32_t>::max()} + 1)
            return false;
    }
    const int64_t signedNumber = decimal.isNegative ? -magnitude : magnitude;
    if (signedNumber > std::numeric_limits<int32_t>::max())
        return false;
    *number = static_cast<int32_t>(signedNumber);
    return true;
}

bool IsSpecialDouble(std::string_view text, double* number)
{
    if (text == "nan")
        *number = std::numeric_limits<double>::quiet_NaN();
    else if (text == "inf")
        *number = std::numeric_limits<double>::infinity();
    else if (text == "-inf")
        *number = -std::numeric_limits<double>::infinity();
    else
        return false;
    return true;
}

bool ParseDouble(std::string_view text, double* number)
{
    if (IsSpecialDouble(text, number))
        return true;
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    Decimal decimal;
    if (!ParseDecimal(text, &decimal))
        return false;
    *number = TextToDouble(text);
    return std::isfinite(*number);
}

bool IsZero(const Decimal& decimal)
{
    return decimal.whole.find_first_not_of('0') == std::string_view::npos &&
           decimal.fraction.find_first_not_of('0') == std::string_view::npos;
}

// Digits without the zeros at the start.
size_t SignificantDigits(const Decimal& decimal)
{
    const std::string digits = std::string(decimal.whole) + std::string(decimal.fraction);
    return digits.size() - std::min(digits.find_first_not_of('0'), digits.size());
}

// Whether a double keeps what the text says.
bool IsExactDouble(std::string_view text, const Decimal& decimal)
{
    if (HasLeadingZero(decimal))
        return false;
    const double number = TextToDouble(text);
    if (!std::isfinite(number) || (number == 0.0 && !IsZero(decimal)))
        return false;
    if (IsWholeNumber(decimal))
        return std::fabs(number) < kWholeNumberLimit;
    return SignificantDigits(decimal) <= kExactDigits;
}

struct CalendarParts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// From minimum to maximum digits, as a number.
bool TakeNumber(std::string_view* text, size_t minimum, size_t maximum, int* number)
{
    const std::string_view digits = TakeDigits(text);
    if (digits.size() < minimum || digits.size() > maximum)
        return false;
    *number = TextToInteger(digits);
    return true;
}

// isStrict: two digits wherever two fit, "-" between.
bool TakeDate(std::string_view* text, bool isStrict, CalendarParts* parts)
{
    const size_t minimum = isStrict ? 2 : 1;
    if (!TakeNumber(text, 4, 4, &parts->year))
        return false;
    const char separator = !isStrict && text->starts_with('/') ? '/' : '-';
    return TakeByte(text, separator) && TakeNumber(text, minimum, 2, &parts->month) &&
           TakeByte(text, separator) && TakeNumber(text, minimum, 2, &parts->day);
}

bool TakeTime(std::string_view* text, bool isStrict, CalendarParts* parts)
{
    const size_t minimum = isStrict ? 2 : 1;
    if (!TakeNumber(text, minimum, 2, &parts->hour) || !TakeByte(text, ':') ||
        !TakeNumber(text, minimum, 2, &parts->minute))
        return false;
    if (!isStrict && text->empty())
        return true;
    return TakeByte(text, ':') && TakeNumber(text, minimum, 2, &parts->second);
}

bool ParseCalendar(std::string_view text, VelaDataType type, bool isStrict, CalendarParts* parts)
{
    if (type != kTypeTime && !TakeDate(&text, isStrict, parts))
        return false;
    if (type == kTypeTimestamp && !TakeByte(&text, ' ') && (isStrict || !TakeByte(&text, 'T')))
        return false;
    if (type != kTypeDate && !TakeTime(&text, isStrict, parts))
        return false;
    return text.empty();
}

int DaysInMonth(int year, int month)
{
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return month == 2 && isLeapYear ? 29 : kDays[month - 1];
}

// Whether the text is a canonical date, time or timestamp that a calendar and a clock have.
bool IsReal(std::string_view text, VelaDataType type)
{
    CalendarParts parts;
    parts.month = parts.day = 1;
    if (!ParseCalendar(text, type, true, &parts))
        return false;
    return parts.month >= 1 && parts.month <= 12 && parts.day >= 1 &&
           parts.day <= DaysInMonth(parts.year, parts.month) && parts.hour <= 23 &&
           parts.minute <= 59 && parts.second <= 59;
}

unsigned NumberCandidates(std::string_view text)
{
    Decimal decimal;
    if (!ParseDecimal(text, &decimal))
        return 0;
    int32_t number = 0;
    const bool isMinusZero = decimal.isNegative && IsZero(decimal);
    const bool isInteger = !HasLeadingZero(decimal) && !isMinusZero && ParseInteger(text, &number);
    return (isInteger ? kInteger : 0u) | (IsExactDouble(text, decimal) ? kDouble : 0u);
}

bool ConvertBoolean(std::string_view text, VelaValue* value)
{
    const bool isTrue =
        EqualsIgnoringCase(text, "true") || EqualsIgnoringCase(text, "t") || text == "1";
    const bool isFalse =
        EqualsIgnoringCase(text, "false") || EqualsIgnoringCase(text, "f") || text == "0";
    value->SetBoolean(isTrue);
    return isTrue || isFalse;
}

}   // namespace

void FieldTypes::Add(std::string_view text)
{
    mHasText = true;
    if (mPossible == 0)
        return;
    unsigned candidates = NumberCandidates(text);
    mHasNumber |= candidates != 0;
    double special = 0;
    if (IsSpecialDouble(text, &special))
        candidates = kDouble;
    if (EqualsIgnoringCase(text, "true") || EqualsIgnoringCase(text, "false"))
        candidates = kBoolean;
    if (IsReal(text, kTypeDate))
        candidates = kDate;
    else if (IsReal(text, kTypeTime))
        candidates = kTime;
    else if (IsReal(text, kTypeTimestamp))
        candidates = kTimestamp;
    mPossible &= candidates;
}

VelaDataType FieldTypes::Type() const
{
    if (!mHasText)
        return kTypeString;
    if ((mPossible & kInteger) != 0)
        return kTypeInteger;
    if ((mPossible & kDouble) != 0 && mHasNumber)
        return kTypeDouble;
    if ((mPossible & kBoolean) != 0)
        return kTypeBoolean;
    if ((mPossible & kDate) != 0)
        return kTypeDate;
    if ((mPossible & kTime) != 0)
        return kTypeTime;
    return (mPossible & kTimestamp) != 0 ? kTypeTimestamp : kTypeString;
}

bool ConvertField(std::string_view text, VelaDataType type, VelaValue* value)
{
    int32_t integer = 0;
    double number = 0;
    CalendarParts parts;
    switch (type) {
        case kTypeInteger:
            if (!ParseInteger(text, &integer))
                return false;
            value->SetInteger(integer);
            return true;
        case kTypeDouble:
            if (!ParseDouble(text, &number))
                return false;
            value->SetDouble(number);
            return true;
        case kTypeBoolean:
            return ConvertBoolean(text, value);
        case kTypeDate:
        case kTypeTime:
        case kTypeTimestamp:
            if (!ParseCalendar(text, type, false, &parts))
                return false;
            value->SetString(string(text, kEncodingASCII));
            value->CoerceToType(type);
            return true;
        default:
            value->SetString(string(text, kEncodingUTF8));
            return true;
    }
}

}   // namespace vela::shell
