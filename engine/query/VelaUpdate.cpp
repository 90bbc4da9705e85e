#include "engine/query/VelaUpdate.h"

#include "engine/query/ExprShape.h"
#include "engine/query/RowsWhere.h"

namespace vela {

namespace {

// From so many rows, and this part of a table's rows, on, reading them column by column is quicker.
constexpr size_t kFewRows = 64;
constexpr size_t kPartOfRows = 16;

bool EvaluateInto(const VelaEvalContext& context, const VelaExpr& expr, VelaValueWithID* slot)
{
    VelaValue value;
    if (!expr.Evaluate(context, &value))
        return false;
    slot->SetValue(value);
    return true;
}

}   // namespace

void VelaUpdate::AddTarget(const VelaColumnInfo& column, VelaExprPtr value)
{
    mTargets.push_back({VelaValueWithID(column.defaultValue, column.columnID), std::move(value)});
}

bool VelaUpdate::RunUpdate()
{
    if (mTable == nullptr)
        return false;
    if (mTargets.empty())
        return true;
    const std::vector<Target*> perRow = FillRowBuffer();
    if (!mWhere)
        LoadColumns(perRow);
    return WriteRows(ChooseRows(), perRow);
}

std::vector<VelaUpdate::Target*> VelaUpdate::FillRowBuffer()
{
    std::vector<Target*> perRow;
    for (Target& target : mTargets) {
        if (target.expr == nullptr)
            continue;
        VelaValue value;
        if (target.expr->EvaluateInIsolation(&value, mDatabase))
            target.value.SetValue(value);
        else
            perRow.push_back(&target);
    }
    return perRow;
}

// All rows will be read: one pass lists them and brings the columns into memory that their new values are made of.
void VelaUpdate::LoadColumns(const std::vector<Target*>& perRow)
{
    TableColumns* columns = perRow.empty() ? nullptr : mTable->Columns();
    if (columns == nullptr || mTable->QtyRows() <= kFewRows)
        return;
    std::vector<bool> wanted(static_cast<size_t>(mTable->QtyColumns()));
    for (const Target* target : perRow)
        CollectColumns(*target->expr, 0, &wanted);
    columns->Prepare(wanted);
}

SimpleVector<uint32_t> VelaUpdate::ChooseRows()
{
    if (mWhere)
        return RowsWhere(mDatabase, mTable, std::move(mWhere));
    SimpleVector<uint32_t> rowIDs;
    mTable->GetRowIDs(&rowIDs);
    return rowIDs;
}

bool VelaUpdate::WriteRows(const SimpleVector<uint32_t>& rowIDs, const std::vector<Target*>& perRow)
{
    SimpleVector<VelaTable*> tables = {mTable};
    SimpleVector<TableColumns*> columns = {nullptr};
    uint32_t row = kInvalidRowID;
    const VelaRecSet recSet(&row);
    VelaEvalContext context;
    context.recSet = &recSet;
    context.tables = &tables;
    context.columns = &columns;
    context.database = mDatabase;
    VelaRow buffer;
    buffer.reserve(mTargets.size());
    for (Target& target : mTargets)
        buffer.push_back(&target.value);
    const bool useColumns = !perRow.empty() && rowIDs.size() > kFewRows &&
                            rowIDs.size() >= mTable->QtyRows() / kPartOfRows;
    for (const uint32_t rowID : rowIDs) {
        if (useColumns)
            columns[0] = mTable->Columns();   // anew, as every change puts an end to it
        row = columns[0] ? columns[0]->RowNumberOf(rowID) : rowID;
        for (Target* target : perRow) {
            if (!EvaluateInto(context, *target->expr, &target->value))
                return false;
        }
        mTable->UpdateRow(rowID, buffer, false);
    }
    return true;
}

}   // namespace vela
