#include "shell/TableFormat.h"

#include <algorithm>
#include <utility>

#include "shell/CellText.h"
#include "shell/DisplayText.h"

namespace vela::shell {

namespace {

constexpr size_t kGap = 2;   // blanks between columns

bool IsNumber(const VelaValue& value)
{
    return value.GetType() == kTypeInteger || value.GetType() == kTypeDouble;
}

// Writes the cells of one line. Blanks wait for text behind them, so that no line ends with padding.
class LineWriter {
public:
    explicit LineWriter(Output* output) : mOutput(output) {}

    // columns: the width of text; width: that of the cell.
    void Write(std::string_view text, size_t columns, size_t width, bool toTheRight)
    {
        mBlanks += mIsAtStart ? 0 : kGap;
        mIsAtStart = false;
        mBlanks += toTheRight ? width - columns : 0;
        if (!text.empty()) {
            mOutput->Write(std::string(mBlanks, ' '));
            mOutput->Write(text);
            mBlanks = 0;
        }
        mBlanks += toTheRight ? 0 : width - columns;
    }
    void End()
    {
        mOutput->Write('\n');
        mBlanks = 0;
        mIsAtStart = true;
    }

private:
    Output* mOutput;
    size_t mBlanks = 0;
    bool mIsAtStart = true;
};

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

    LineWriter line(output);
    VelaValue value;
    Cell cell;
    for (const uint32_t rowID : rowIDs) {
        for (size_t i = 0; i < columns.size(); i++) {
            value.SetNull(kTypeNone);
            result.rows->GetValue(rowID, static_cast<long>(i), &value);
            ShowValue(value, &cell);
            line.Write(cell.text, cell.columns, columns[i].width, columns[i].isNumeric);
        }
        line.End();
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
    LineWriter line(output);
    for (size_t i = 0; i < columns.size(); i++) {
        size_t width = 0;
        const std::string name = ShownColumnName(rows, static_cast<long>(i), &width);
        line.Write(name, width, columns[i].width, columns[i].isNumeric);
    }
    line.End();
    for (const Column& column : columns)
        line.Write(std::string(column.width, '-'), column.width, column.width, false);
    line.End();
}

}   // namespace vela::shell
