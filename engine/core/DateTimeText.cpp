#include "engine/core/DateTimeText.h"

namespace vela {

namespace {

constexpr size_t kNone = std::string_view::npos;
constexpr size_t kYearDigits = 4;
constexpr size_t kPartDigits = 2;   // of everything but a year

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

// The run of at most most digits that ends just before end.
std::string_view DigitsBefore(std::string_view text, size_t end, size_t most)
{
    size_t start = end;
    while (start > 0 && end - start < most && IsDigit(text[start - 1]))
        start--;
    return text.substr(start, end - start);
}

// The one or two digits, if there are any, just after the separator at position; none when position
// is kNone.
std::string_view PartAfter(std::string_view text, size_t position)
{
    if (position == kNone)
        return {};
    size_t end = position + 1;
    while (end < text.size() && end - position <= kPartDigits && IsDigit(text[end]))
        end++;
    return text.substr(position + 1, end - position - 1);
}

size_t NextSeparator(std::string_view text, size_t position)
{
    return position == kNone ? kNone : text.find(text[position], position + 1);
}

// Whether text is of the form: 'd' stands for any digit, all else for itself.
bool HasForm(std::string_view text, std::string_view form)
{
    if (text.size() != form.size())
        return false;
    for (size_t i = 0; i < text.size(); i++) {
        if (form[i] == 'd' ? !IsDigit(text[i]) : text[i] != form[i])
            return false;
    }
    return true;
}

// Appends digits as a number of at least width digits.
void AppendPadded(string& text, std::string_view digits, size_t width)
{
    while (digits.size() > width && digits[0] == '0')
        digits.remove_prefix(1);
    for (size_t count = digits.size(); count < width; count++)
        text += '0';
    text += digits;
}

}   // namespace

string DateText(std::string_view text)
{
    if (HasForm(text, "dddd-dd-dd"))
        return string(text, kEncodingASCII);   // what comes below, at a fraction of the cost
    size_t separator = text.find('-');
    if (separator == kNone)
        separator = text.find('/');
    const std::string_view year =
        separator == kNone ? std::string_view() : DigitsBefore(text, separator, kNone);

    string date;
    AppendPadded(date, year, kYearDigits);
    date += '-';
    AppendPadded(date, PartAfter(text, separator), kPartDigits);
    date += '-';
    AppendPadded(date, PartAfter(text, NextSeparator(text, separator)), kPartDigits);
    return date;
}

string TimeText(std::string_view text)
{
    if (HasForm(text, "dd:dd:dd"))
        return string(text, kEncodingASCII);
    const size_t separator = text.find(':');
    const std::string_view hour =
        separator == kNone ? std::string_view() : DigitsBefore(text, separator, kPartDigits);

    string time;
    AppendPadded(time, hour, kPartDigits);
    time += ':';
    AppendPadded(time, PartAfter(text, separator), kPartDigits);
    time += ':';
    AppendPadded(time, PartAfter(text, NextSeparator(text, separator)), kPartDigits);
    return time;
}

}   // namespace vela
