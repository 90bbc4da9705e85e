#include "engine/query/VelaUpdate.h"

#include "engine/query/ExprShape.h"
#include "engine/query/VExprField.h"
#include "engine/query/VelaQuery.h"

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
    auto target = std::make_unique<Target>();
    target->value = VelaValueWithID(column.defaultValue, column.columnID);
    target->expr = std::move(value);
    mTargets.push_back(std::move(target));
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
    for (const std::unique_ptr<Target>& target : mTargets) {
        if (target->expr == nullptr)
            continue;
        VelaValue value;
        if (target->expr->EvaluateInIsolation(&value, mDatabase))
            target->value.SetValue(value);
        else
            perRow.push_back(target.get());
    }
    return perRow;
}

// All rows will be read: one pass lists them and brings the columns into memory that their new values are made of.
void VelaUpdate::LoadColumns(const std::vector<Target*>& perRow)
{
    TableColumns* columns = perRow.empty() ? nullptr : mTable->Columns();
    if (columns == nullptr || mTable->QtyRows() <= kFewRows)
        return;
    std::vector<std::vector<bool>> wanted(1);
    wanted[0].resize(static_cast<size_t>(mTable->QtyColumns()));
    for (const Target* target : perRow)
        CollectColumns(*target->expr, &wanted);
    columns->Prepare(wanted[0]);
}

SimpleVector<uint32_t> VelaUpdate::ChooseRows()
{
    if (mWhere)
        return QueryRows();
    SimpleVector<uint32_t> rowIDs;
    mTable->GetRowIDs(&rowIDs);
    return rowIDs;
}

// The query has the WHERE for its run only.
SimpleVector<uint32_t> VelaUpdate::QueryRows()
{
    VelaQuery query(mDatabase);
    query.AddTable(mTable);
    auto rowIDField = std::make_unique<VExprField>(0, 0);
    rowIDField->SetName("_rowid");
    query.AddOutput(std::move(rowIDField));
    query.SetWhere(std::move(mWhere));
    const std::unique_ptr<VelaTempTable> result = query.RunQuery();
    mWhere = query.TakeWhere();
    SimpleVector<uint32_t> rowIDs;
    rowIDs.reserve(result->RowCount());
    for (size_t row = 0; row < result->RowCount(); row++)
        rowIDs.push_back(static_cast<uint32_t>(result->RowValues(row)[0].GetInteger()));
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
    for (const std::unique_ptr<Target>& target : mTargets)
        buffer.push_back(&target->value);
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
