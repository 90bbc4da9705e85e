#include "shell/Literal.h"

#include <cmath>

#include "shell/CellText.h"
#include "shell/DisplayText.h"

namespace vela::shell {

namespace {

std::string Hex32(uint32_t number)
{
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += "0123456789abcdef"[(number >> shift) & 15u];
    return text;
}

// In quotes, with quotes doubled. The text holds no NUL.
std::string QuotedText(std::string_view text)
{
    std::string result = "'";
    for (size_t quote = text.find('\''); quote != std::string_view::npos; quote = text.find('\'')) {
        result += text.substr(0, quote + 1);
        result += '\'';
        text.remove_prefix(quote + 1);
    }
    result += text;
    result += '\'';
    return result;
}

// Expressions where no literal serves: a negated literal is 0 minus it, which makes -0.0 a plain
// zero.
std::string DoubleExpression(double number)
{
    if (std::isnan(number))
        return "0.0/0.0";
    if (std::isinf(number))
        return number > 0 ? "1.0/0.0" : "-1.0/0.0";
    if (number == 0.0 && std::signbit(number))
        return "0.0*-1.0";
    return DoubleWithPoint(number);
}

Literal StringLiteral(const string& text)
{
    const Utf8Text utf8 = TextAsUtf8(text);
    Literal result;
    std::string bytes(utf8.text.View());
    const TextEncoding encoding = text.Encoding();
    if (encoding != kEncodingUTF8 && encoding != kEncodingASCII)
        result.loss = "its encoding " + Hex32(encoding);
    if (bytes.find('\0') != std::string::npos) {
        result.loss += (result.loss.empty() ? "" : ", ") +
                       std::string("its NUL bytes, in hexadecimal it is ") + HexText(bytes);
        std::erase(bytes, '\0');
    }
    result.text = QuotedText(bytes);
    return result;
}

// A text that coercion would change can't be said: every text given to a Date column is normalised.
Literal CalendarLiteral(const VelaValue& value, const char* keyword)
{
    const string text = value.StoredText();
    if (text.empty())
        return {};   // what a column reads as that was never set
    VelaValue coerced = VelaValue::String(text);
    coerced.CoerceToType(value.GetType());
    if (coerced.StoredText() == text)
        return {keyword + QuotedText(text.View()), ""};
    Literal result = StringLiteral(coerced.StoredText());
    result.loss = "its text " + ShownText(text.View());
    return result;
}

Literal BinaryLiteral(const VelaValue& value)
{
    if (value.TextView().empty())
        return {};
    Literal result = StringLiteral(string(value.TextView(), kEncodingUTF8));
    result.loss =
        "its type Binary, it becomes a String; in hexadecimal it is " + HexText(value.TextView());
    return result;
}

}   // namespace

Literal LiteralOf(const VelaValue& value)
{
    if (value.IsNull())
        return {};
    switch (value.GetType()) {
        case kTypeInteger:   // from ten digits on a Double, which the column turns back exactly
            return {std::to_string(value.GetInteger()), ""};
        case kTypeBoolean:
            return {value.GetInteger() != 0 ? "TRUE" : "FALSE", ""};
        case kTypeDouble:
            return {DoubleExpression(value.GetDouble()), ""};
        case kTypeString:
            return StringLiteral(value.StoredText());
        case kTypeDate:
            return CalendarLiteral(value, "DATE ");
        case kTypeTime:
            return CalendarLiteral(value, "TIME ");
        case kTypeTimestamp:
            return CalendarLiteral(value, "TIMESTAMP ");
        case kTypeBinary:
            return BinaryLiteral(value);
        case kTypeNone:
            break;
    }
    return {};
}

}   // namespace vela::shell
