#include "shell/JsonLinesFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "shell/CellText.h"

namespace vela::shell {

namespace {

using Json = nlohmann::json;

// Bytes that can't stand in a JSON string as they are.
bool NeedsEscape(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < ' ' || byte == '"' || byte == '\\';
    });
}

// A text as a JSON string. What is not UTF-8 in it becomes U+FFFD.
void WriteString(std::string_view text, bool isValid, Output* output)
{
    if (!isValid || NeedsEscape(text)) {
        output->Write(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
        return;
    }
    output->Write('"');
    output->Write(text);
    output->Write('"');
}

// For names and messages, which are strings whatever their bytes.
void WriteString(const string& text, Output* output)
{
    const Utf8Text utf8 = TextAsUtf8(text);
    WriteString(utf8.text.View(), utf8.isValid, output);
}

void WriteText(const VelaValue& value, Output* output)
{
    const Utf8Text utf8 = TextAsUtf8(value);
    if (utf8.isValid)
        WriteString(utf8.text.View(), true, output);
    else
        output->Write("{\"hex\": \"" + HexText(utf8.text.View()) + "\"}");
}

void WriteInteger(int64_t number, Output* output)
{
    char digits[24];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    output->Write(std::string_view(digits, static_cast<size_t>(end.ptr - digits)));
}

void WriteDouble(double number, Output* output)
{
    const std::string text = DoubleWithPoint(number);
    output->Write(std::isfinite(number) ? text : '"' + text + '"');
}

void WriteCell(const VelaValue& value, Output* output)
{
    const VelaDataType type = value.IsNull() ? kTypeNone : value.GetType();
    if (IsTextBacked(type))
        WriteText(value, output);
    else if (type == kTypeInteger)
        WriteInteger(value.GetInteger(), output);
    else if (type == kTypeDouble)
        WriteDouble(value.GetDouble(), output);
    else if (type == kTypeBoolean)
        output->Write(value.GetInteger() != 0 ? "true" : "false");
    else
        output->Write("null");
}

void WriteColumns(const VelaTable& rows, Output* output)
{
    output->Write(", \"columns\": [");
    for (long i = 0; i < rows.QtyColumns(); i++) {
        const char* type = DataTypeName(rows.Column(i)->Type());
        output->Write(i == 0 ? "{\"name\": " : ", {\"name\": ");
        WriteString(rows.Column(i)->name, output);
        output->Write(", \"type\": \"");
        output->Write(type ? type : "None");
        output->Write("\"}");
    }
    output->Write(']');
}

void WriteRows(VelaTable* rows, Output* output)
{
    output->Write(", \"rows\": [");
    SimpleVector<uint32_t> rowIDs;
    rows->GetRowIDs(&rowIDs);
    const long columns = rows->QtyColumns();
    VelaValue value;
    for (size_t row = 0; row < rowIDs.size(); row++) {
        output->Write(row == 0 ? "[" : ", [");
        for (long i = 0; i < columns; i++) {
            if (i > 0)
                output->Write(", ");
            value.SetNull(kTypeNone);
            rows->GetValue(rowIDs[row], i, &value);
            WriteCell(value, output);
        }
        output->Write(']');
    }
    output->Write(']');
}

}   // namespace

void JsonLinesFormat::WriteResult(const StatementResult& result, Output* output)
{
    output->Write("{\"n\": ");
    WriteInteger(static_cast<int64_t>(result.number), output);
    output->Write(", \"canonical\": ");
    if (result.canonical)
        WriteString(*result.canonical, output);
    else
        output->Write("null");
    output->Write(", \"sqlstate\": \"");
    output->Write(result.sqlState);
    output->Write("\", \"message\": ");
    WriteString(result.message, output);
    if (result.rows) {
        WriteColumns(*result.rows, output);
        WriteRows(result.rows, output);
    }
    output->Write("}\n");
}

}   // namespace vela::shell
