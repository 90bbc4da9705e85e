#include "shell/CellText.h"

#include "runtime/NumberText.h"
#include "shell/DisplayText.h"

namespace vela::shell {

namespace {

// Whether the bytes of a text with this tag are shown unconverted.
bool KeepsItsBytes(TextEncoding encoding)
{
    return encoding == kEncodingUTF8 || encoding == kEncodingASCII ||
           IconvName(encoding) == nullptr;
}

}   // namespace

Utf8Text TextAsUtf8(const string& text)
{
    const TextEncoding encoding = text.Encoding();
    if (KeepsItsBytes(encoding))
        return {text, IsValidUtf8(text.View())};
    string converted = ConvertEncoding(text, kEncodingUTF8);
    if (ConvertEncoding(converted, encoding) != text)   // malformed bytes became "?"
        return {text, false};
    return {static_cast<string&&>(converted), true};
}

Utf8Text TextAsUtf8(const VelaValue& value)
{
    if (value.GetType() == kTypeBinary)
        return {value.StoredText(), false};
    return TextAsUtf8(value.StoredText());
}

string CellText(const VelaValue& value)
{
    return IsTextBacked(value.GetType()) ? TextAsUtf8(value).text : value.GetSaveString();
}

std::string DoubleWithPoint(double number)
{
    std::string text(DoubleText(number).View());
    if (text.find_first_not_of("-0123456789") == std::string::npos)
        text += ".0";
    return text;
}

std::string HexText(std::string_view bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[static_cast<unsigned char>(byte) & 15u];
    }
    return text;
}

}   // namespace vela::shell
