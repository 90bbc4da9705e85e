#include "engine/query/VExprField.h"

#include "engine/query/ExprOperands.h"
#include "runtime/NumberText.h"

namespace vela {

namespace {

VelaTable* TableAt(const SimpleVector<VelaTable*>& tables, uint32_t index)
{
    return index < tables.size() ? tables[index] : nullptr;
}

TableColumns* ColumnsAt(const VelaEvalContext& context, uint32_t table)
{
    return context.columns && table < context.columns->size() ? (*context.columns)[table] : nullptr;
}

// Forms whose values can be read one by one without making a VelaValue.
bool IsPlainForm(ColumnData::Form form)
{
    return form == ColumnData::Form::kIntegers || form == ColumnData::Form::kDoubles ||
           form == ColumnData::Form::kTexts;
}

}   // namespace

VExprField::VExprField(uint32_t table, uint32_t column)
    : VelaExpr(ExprKind::kField), mTable(table), mColumn(column)
{}

VelaDataType VExprField::GetType(const SimpleVector<VelaTable*>& tables) const
{
    const VelaTable* table = TableAt(tables, mTable);
    const VelaColumnInfo* column = table ? table->Column(static_cast<long>(mColumn)) : nullptr;
    return column ? column->Type() : kTypeNone;
}

bool VExprField::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    const uint32_t row = CurrentRow(context);
    if (row == kInvalidRowID)
        return false;
    const long column = static_cast<long>(mColumn);
    if (TableColumns* columns = ColumnsAt(context, mTable))
        return columns->GetValue(row, column, result);
    VelaTable* table = (*context.tables)[mTable];
    return table && table->GetValue(row, column, result);
}

string VExprField::Description() const
{
    const char letter = static_cast<char>('A' + mTable);
    return JoinDescription(
        {string(std::string_view(&letter, 1), kEncodingUTF8), ".", IntegerText(mColumn)});
}

long VExprField::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    if (single)
        *single = true;
    return recSet.RowID(mTable) == kInvalidRowID ? static_cast<long>(mTable) : -1;
}

void VExprField::CollectTables(std::vector<bool>* tables) const
{
    if (tables->size() <= mTable)
        tables->resize(size_t{mTable} + 1);
    (*tables)[mTable] = true;
}

const ColumnData* VExprField::ColumnInPlace(const VelaEvalContext& context, uint32_t* row) const
{
    TableColumns* columns = ColumnsAt(context, mTable);
    *row = CurrentRow(context);
    if (!columns || *row >= columns->RowCount())
        return nullptr;
    const ColumnData* data = columns->Load(static_cast<long>(mColumn));
    return data && IsPlainForm(data->form) ? data : nullptr;
}

const ColumnData* VExprField::LoadedColumn(const VelaEvalContext& context) const
{
    const TableColumns* columns = ColumnsAt(context, mTable);
    const ColumnData* data = columns ? columns->Loaded(static_cast<long>(mColumn)) : nullptr;
    return data && IsPlainForm(data->form) ? data : nullptr;
}

uint32_t VExprField::CurrentRow(const VelaEvalContext& context) const
{
    if (!context.tables || mTable >= context.tables->size())
        return kInvalidRowID;
    if (context.recSet)
        return context.recSet->RowID(mTable);
    if (!context.group || context.group->Count() == 0)
        return kInvalidRowID;
    return context.group->At(0).RowID(mTable);
}

}   // namespace vela
