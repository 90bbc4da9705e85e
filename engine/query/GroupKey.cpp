#include "engine/query/GroupKey.h"

#include "engine/query/ExprShape.h"

namespace vela {

namespace {

void AppendInteger(int32_t number, std::string* key)
{
    key->append(reinterpret_cast<const char*>(&number), sizeof number);
}

}   // namespace

GroupKey::GroupKey(const std::vector<VelaExprPtr>& columns, const VelaEvalContext& context)
    : mColumns(columns), mContext(context)
{}

std::string_view GroupKey::Of(const VelaRecSet& recSet)
{
    mContext.recSet = &recSet;
    mKey.clear();
    for (const VelaExprPtr& column : mColumns)
        Append(*column);
    return mKey;
}

const ColumnData* GroupKey::IntegerColumn(size_t* table) const
{
    const VExprField* field = mColumns.size() == 1 ? AsField(mColumns[0].get()) : nullptr;
    const ColumnData* data = field ? field->LoadedColumn(mContext) : nullptr;
    if (data == nullptr || data->type != kTypeInteger ||
        data->form != ColumnData::Form::kIntegers || !data->nulls.empty())
        return nullptr;
    *table = field->Table();
    return data;
}

void GroupKey::Append(const VelaExpr& column)
{
    if (AppendInPlace(column))
        return;
    VelaValue value;
    column.Evaluate(mContext, &value);
    if (value.GetType() == kTypeInteger)
        AppendInteger(value.GetInteger(), &mKey);
    else
        mKey.append(value.GetString().View());
}

// The common cases, without making a value: an Integer or a text as it lies in memory.
bool GroupKey::AppendInPlace(const VelaExpr& column)
{
    const VExprField* field = AsField(&column);
    uint32_t row = 0;
    const ColumnData* data = field ? field->ColumnInPlace(mContext, &row) : nullptr;
    if (data == nullptr || data->IsNull(row))
        return false;
    if (data->form == ColumnData::Form::kIntegers && data->type == kTypeInteger)
        AppendInteger(data->integers[row], &mKey);
    else if (data->form == ColumnData::Form::kTexts && data->type == kTypeString)
        mKey.append(data->Text(row));
    else
        return false;
    return true;
}

}   // namespace vela
