#include "engine/sql/SQLLiteralNode.h"

#include "engine/query/VExprConstant.h"
#include "runtime/NumberText.h"

namespace vela {

namespace {

bool StartsWith(std::string_view text, std::string_view word)
{
    return text.size() >= word.size() && EqualsIgnoringCase(text.substr(0, word.size()), word);
}

bool IsTrimWord(std::string_view text)
{
    return EqualsIgnoringCase(text, "LEADING") || EqualsIgnoringCase(text, "TRAILING") ||
           EqualsIgnoringCase(text, "BOTH");
}

constexpr size_t kIntegerDigits = 9;   // as many always fit 32 bits

// Digits alone, and few of them.
bool IsPlainInteger(std::string_view text, int32_t* number)
{
    if (text.empty() || text.size() > kIntegerDigits)
        return false;
    *number = 0;
    for (const char byte : text) {
        if (byte < '0' || byte > '9')
            return false;
        *number = *number * 10 + (byte - '0');
    }
    return true;
}

VelaValue NumberValue(std::string_view text)
{
    int32_t number = 0;
    if (IsPlainInteger(text, &number))
        return VelaValue::Integer(number);
    if (text.size() > kIntegerDigits || text.find('.') != std::string_view::npos)
        return VelaValue::Double(TextToDouble(text));
    return VelaValue::Integer(TextToInteger(text));
}

}   // namespace

void SQLLiteralNode::Describe(string* text) const
{
    DescribeText(mText, text);
}

VelaExprPtr SQLLiteralNode::ConvertToVelaExpr(const SQLNames&, const SQLTables&, VelaStatus*) const
{
    return std::make_unique<VExprConstant>(Value());
}

bool SQLLiteralNode::GetConstant(VelaValue* value) const
{
    *value = Value();
    return true;
}

VelaValue SQLLiteralNode::TextValue(std::string_view literal) const
{
    return VelaValue::String(StringLiteralValue(literal, mText.Encoding(), mEscape));
}

VelaValue SQLLiteralNode::Value() const
{
    struct {
        std::string_view keyword;
        VelaDataType type;
    } const kinds[] = {{"DATE ", kTypeDate}, {"TIME ", kTypeTime}, {"TIMESTAMP ", kTypeTimestamp}};

    const std::string_view text = mText.View();
    if (text.empty() || (text[0] >= '0' && text[0] <= '9'))
        return NumberValue(text);
    if (text[0] == '\'')
        return TextValue(text);
    if (EqualsIgnoringCase(text, "TRUE") || EqualsIgnoringCase(text, "FALSE"))
        return VelaValue::Boolean(EqualsIgnoringCase(text, "TRUE"));
    for (const auto& kind : kinds) {
        if (!StartsWith(text, kind.keyword))
            continue;
        VelaValue value = TextValue(text.substr(kind.keyword.size()));
        value.CoerceToType(kind.type);
        return value;
    }
    return IsTrimWord(text) ? VelaValue::String(mText.ToString()) : NumberValue(text);
}

string StringLiteralValue(std::string_view text, TextEncoding encoding, char escape)
{
    std::string_view rest = text;
    const bool isQuoted = !rest.empty() && rest.front() == '\'';
    if (isQuoted) {
        rest.remove_prefix(1);
        if (!rest.empty() && rest.back() == '\'')
            rest.remove_suffix(1);
    }
    const bool hasEscapes = escape != '\0' && rest.find(escape) != std::string_view::npos;
    if (!hasEscapes && rest.find('\'') == std::string_view::npos)
        return string(rest, encoding);

    string value(rest, encoding);
    char* bytes = value.MutableBytes();
    size_t size = 0;
    for (size_t i = 0; i < rest.size(); i++) {
        const bool isEscape = hasEscapes && rest[i] == escape;
        if ((isEscape || rest.substr(i, 2) == "''") && i + 1 < rest.size())
            i++;
        bytes[size++] = rest[i];
    }
    value.Resize(size);
    return value;
}

}   // namespace vela
