#include "plugin/SQLText.h"

#include <cmath>

#include "runtime/NumberText.h"

namespace vela {

namespace {

constexpr char kQuote = '\'';

bool IsLetter(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool AppendTextLiteral(std::string_view text, char escape, string* statement)
{
    if (escape == kQuote || text.find('\0') != std::string_view::npos)
        return false;
    *statement += kQuote;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); i++) {
        const bool isEscape = escape != '\0' && text[i] == escape;
        if (!isEscape && text[i] != kQuote)
            continue;
        *statement += text.substr(start, i - start);
        *statement += text[i];   // what makes the byte itself, which follows, literal
        start = i;
    }
    *statement += text.substr(start);
    *statement += kQuote;
    return true;
}

bool AppendDoubleLiteral(double number, string* statement)
{
    if (!std::isfinite(number) || (number == 0.0 && std::signbit(number)))
        return false;
    *statement += DoubleText(number);
    return true;
}

}   // namespace

bool IsPlainName(const string& name)
{
    constexpr std::string_view kNotInWords("\0\t\r %()*+,-/;<=>\\^.", 19);
    const std::string_view bytes = name.View();
    return !bytes.empty() && (IsLetter(bytes[0]) || bytes[0] == '_' || bytes[0] == '#') &&
           bytes.find_first_of(kNotInWords) == std::string_view::npos;
}

bool AppendLiteral(const VelaValue& value, char escape, string* statement)
{
    if (value.IsNull())
        return false;
    switch (value.GetType()) {
        case kTypeInteger:
            *statement += IntegerText(value.GetInteger());
            return true;
        case kTypeBoolean:
            *statement += value.GetInteger() != 0 ? "TRUE" : "FALSE";
            return true;
        case kTypeDouble:
            return AppendDoubleLiteral(value.GetDouble(), statement);
        default:
            return AppendTextLiteral(value.TextView(), escape, statement);
    }
}

}   // namespace vela
