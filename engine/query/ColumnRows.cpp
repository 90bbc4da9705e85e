#include "engine/query/ColumnRows.h"

#include <algorithm>

#include "engine/query/ExprShape.h"
#include "engine/query/VExprField.h"

namespace vela {

namespace {

// Of a table's rows, for a result to share its columns.
constexpr size_t kLeastPart = 4;
// Values that are made ahead at most, and at first; from then on, some more each time.
constexpr size_t kMostAhead = 256;
constexpr size_t kFirstAhead = 4;

}   // namespace

std::unique_ptr<ColumnRows> ColumnRows::Share(const std::vector<VelaExprPtr>& outputs,
                                              const VelaEvalContext& context, size_t leastRows,
                                              RecSetList* list)
{
    if (!IsWorthSharing(*list, context, leastRows))
        return nullptr;
    std::unique_ptr<ColumnRows> rows(new ColumnRows(list->TableCount()));
    bool shares = rows->ShareRowIDs(context);
    for (size_t i = 0; shares && i < outputs.size(); i++)
        shares = rows->ShareColumn(*outputs[i], context);
    if (!shares)
        return nullptr;
    rows->mRecSets = std::move(*list);
    return rows;
}

bool ColumnRows::IsWorthSharing(const RecSetList& list, const VelaEvalContext& context,
                                size_t leastRows)
{
    const auto hasEnough = [&list](TableColumns* columns) {
        return columns == nullptr || list.Count() >= columns->RowCount() / kLeastPart;
    };
    return list.Count() >= leastRows &&
           std::all_of(context.columns->begin(), context.columns->end(), hasEnough);
}

bool ColumnRows::ShareRowIDs(const VelaEvalContext& context)
{
    for (TableColumns* columns : *context.columns) {
        mRowIDs.push_back(columns ? columns->ShareRowIDs() : nullptr);
        if (columns && mRowIDs.back() == nullptr)
            return false;
    }
    return true;
}

// False: it is no column, or not in memory.
bool ColumnRows::ShareColumn(const VelaExpr& output, const VelaEvalContext& context)
{
    const VExprField* field = AsField(&output);
    if (field == nullptr || field->Table() >= mRowIDs.size() || mRowIDs[field->Table()] == nullptr)
        return false;
    const size_t table = field->Table();
    const long number = static_cast<long>(field->ColumnNumber());
    mOutputs.push_back({table, number == 0 ? nullptr : (*context.columns)[table]->Share(number)});
    return number == 0 || mOutputs.back().column != nullptr;
}

// A value that was not made ahead. Values of the rows to come are, when the row follows on the one read last.
void ColumnRows::MakeValue(size_t row, Output* output, VelaValue* value)
{
    if (row == output->start + output->made) {
        MakeAhead(row, output);
        *value = output->values[0];
        return;
    }
    output->start = row + 1;
    output->made = 0;
    if (output->column)
        output->column->GetValue(mRecSets.At(row).RowID(output->table), value);
    else
        value->SetInteger(static_cast<int32_t>(RowIDOf(row, output->table)));
}

// The texts share memory, which goes with the last of them.
void ColumnRows::MakeAhead(size_t row, Output* output)
{
    const size_t count = std::min({kFirstAhead * (output->made + 1), kMostAhead, Count() - row});
    output->start = row;
    output->made = 0;   // also when memory runs out
    if (output->values.size() < count)
        output->values.resize(count);
    if (output->column) {
        StringArena texts;
        const uint32_t* rows = mRecSets.At(row).Rows() + output->table;
        output->column->GetValues(rows, mRecSets.TableCount(), count, &texts, output->values.data(),
                                  1);
    } else {
        for (size_t i = 0; i < count; i++)
            output->values[i].SetInteger(static_cast<int32_t>(RowIDOf(row + i, output->table)));
    }
    output->made = count;
}

VelaRecSet ColumnRows::Source(size_t row)
{
    for (size_t table = 0; table < mSource.size(); table++)
        mSource[table] = RowIDOf(row, table);
    return VelaRecSet(mSource.data());
}

uint32_t ColumnRows::RowIDOf(size_t row, size_t table) const
{
    const uint32_t number = mRecSets.At(row).RowID(table);
    return mRowIDs[table] ? (*mRowIDs[table])[number] : number;
}

}   // namespace vela
