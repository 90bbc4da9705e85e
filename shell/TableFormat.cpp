#include "shell/TableFormat.h"

#include <algorithm>
#include <utility>

#include "shell/CellText.h"
#include "shell/DisplayText.h"

namespace vela::shell {

namespace {

constexpr std::string_view kGap = "  ";

bool IsNumber(const VelaValue& value)
{
    return value.GetType() == kTypeInteger || value.GetType() == kTypeDouble;
}

// One cell of a line. The last column gets no blanks behind its text.
void WriteCell(std::string_view text, size_t columns, size_t width, bool toTheRight, bool isLast,
               Output* output)
{
    const std::string padding(width - columns, ' ');
    if (toTheRight)
        output->Write(padding);
    output->Write(text);
    if (isLast) {
        output->Write('\n');
        return;
    }
    if (!toTheRight)
        output->Write(padding);
    output->Write(kGap);
}

std::string ShownColumnName(const VelaTable& rows, long number, size_t* columns)
{
    return ShownText(TextAsUtf8(rows.Column(number)->name).text.View(), columns);
}

}   // namespace

TableFormat::TableFormat(bool headers, std::string nullText)
    : mHeaders(headers), mNullText(std::move(nullText))
{}

void TableFormat::WriteResult(const StatementResult& result, Output* output)
{
    if (!result.rows)
        return;
    SimpleVector<uint32_t> rowIDs;
    result.rows->GetRowIDs(&rowIDs);
    const std::vector<Column> columns = Measure(result.rows, rowIDs);
    if (mHeaders)
        WriteHeaders(*result.rows, columns, output);

    VelaValue value;
    Cell cell;
    for (const uint32_t rowID : rowIDs) {
        for (size_t i = 0; i < columns.size(); i++) {
            value.SetNull(kTypeNone);
            result.rows->GetValue(rowID, static_cast<long>(i), &value);
            ShowValue(value, &cell);
            WriteCell(cell.text, cell.columns, columns[i].width, columns[i].isNumeric,
                      i + 1 == columns.size(), output);
        }
    }
}

void TableFormat::ShowValue(const VelaValue& value, Cell* cell) const
{
    if (value.IsNull())
        cell->text = ShownText(mNullText, &cell->columns);
    else if (value.GetType() == kTypeBinary)
        cell->text = ShownText(HexText(value.TextView()), &cell->columns);
    else
        cell->text = ShownText(CellText(value).View(), &cell->columns);
}

std::vector<TableFormat::Column> TableFormat::Measure(VelaTable* rows,
                                                      const SimpleVector<uint32_t>& rowIDs) const
{
    std::vector<Column> columns(static_cast<size_t>(rows->QtyColumns()));
    VelaValue value;
    Cell cell;
    for (size_t i = 0; i < columns.size(); i++) {
        bool hasOthers = false;
        if (mHeaders)
            ShownColumnName(*rows, static_cast<long>(i), &columns[i].width);
        for (const uint32_t rowID : rowIDs) {
            value.SetNull(kTypeNone);
            rows->GetValue(rowID, static_cast<long>(i), &value);
            ShowValue(value, &cell);
            columns[i].width = std::max(columns[i].width, cell.columns);
            (IsNumber(value) ? columns[i].isNumeric : hasOthers) |= !value.IsNull();
        }
        columns[i].isNumeric &= !hasOthers;
    }
    return columns;
}

void TableFormat::WriteHeaders(const VelaTable& rows, const std::vector<Column>& columns,
                               Output* output) const
{
    for (size_t i = 0; i < columns.size(); i++) {
        size_t width = 0;
        const std::string name = ShownColumnName(rows, static_cast<long>(i), &width);
        WriteCell(name, width, columns[i].width, columns[i].isNumeric, i + 1 == columns.size(),
                  output);
    }
    for (size_t i = 0; i < columns.size(); i++) {
        const std::string rule(columns[i].width, '-');
        WriteCell(rule, rule.size(), rule.size(), false, i + 1 == columns.size(), output);
    }
}

}   // namespace vela::shell
