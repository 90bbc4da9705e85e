#include "shell/CsvFormat.h"

#include <utility>

#include "shell/CellText.h"

namespace vela::shell {

namespace {

bool NeedsQuotes(std::string_view text)
{
    return text.find_first_of(",\"\r\n") != std::string_view::npos || text.starts_with(' ') ||
           text.ends_with(' ') || text.starts_with('\t') || text.ends_with('\t');
}

// What a Date, Time or Timestamp column reads as that was never set. No text makes one, so it has
// to come back from a bare field.
bool IsUnsetDate(const VelaValue& value)
{
    const VelaDataType type = value.GetType();
    return (type == kTypeDate || type == kTypeTime || type == kTypeTimestamp) &&
           value.TextView().empty();
}

}   // namespace

CsvFormat::CsvFormat(bool headers, std::string nullText)
    : mHeaders(headers), mNullText(std::move(nullText))
{}

void CsvFormat::WriteResult(const StatementResult& result, Output* output)
{
    if (!result.rows)
        return;
    const long columns = result.rows->QtyColumns();
    if (mHeaders) {
        for (long i = 0; i < columns; i++) {
            WriteField(TextAsUtf8(result.rows->Column(i)->name).text.View(), output);
            output->Write(i + 1 == columns ? '\n' : ',');
        }
    }
    SimpleVector<uint32_t> rowIDs;
    result.rows->GetRowIDs(&rowIDs);
    VelaValue value;
    for (const uint32_t rowID : rowIDs) {
        for (long i = 0; i < columns; i++) {
            value.SetNull(kTypeNone);
            result.rows->GetValue(rowID, i, &value);
            if (value.IsNull())
                output->Write(mNullText);
            else if (!IsUnsetDate(value))
                WriteField(CellText(value).View(), output);
            output->Write(i + 1 == columns ? '\n' : ',');
        }
    }
}

void CsvFormat::WriteField(std::string_view text, Output* output) const
{
    if (!NeedsQuotes(text) && !text.empty() && text != mNullText) {
        output->Write(text);
        return;
    }
    output->Write('"');
    for (size_t quote = text.find('"'); quote != std::string_view::npos; quote = text.find('"')) {
        output->Write(text.substr(0, quote + 1));
        output->Write('"');
        text.remove_prefix(quote + 1);
    }
    output->Write(text);
    output->Write('"');
}

}   // namespace vela::shell
