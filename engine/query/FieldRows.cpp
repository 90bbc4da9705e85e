#include "engine/query/FieldRows.h"

#include <algorithm>

#include "engine/query/ExprShape.h"

namespace vela {

namespace {

// Few enough for their values to stay in the processor's nearer caches between two columns.
constexpr size_t kRowsAtOnce = 256;

}   // namespace

bool FieldRows::Serves(const std::vector<VelaExprPtr>& outputs)
{
    return std::all_of(outputs.begin(), outputs.end(),
                       [](const VelaExprPtr& output) { return AsField(output.get()) != nullptr; });
}

FieldRows::FieldRows(const std::vector<VelaExprPtr>& outputs, const VelaEvalContext& context)
    : mContext(context)
{
    mFields.reserve(outputs.size());
    for (const VelaExprPtr& output : outputs)
        mFields.push_back(AsField(output.get()));
}

void FieldRows::Append(const RecSetList& list, VelaTempTable* result)
{
    result->ReserveRows(list.Count());
    for (size_t start = 0; start < list.Count(); start += kRowsAtOnce)
        AppendSome(list.Group(start, std::min(start + kRowsAtOnce, list.Count())), result);
}

void FieldRows::AppendSome(const VelaRecSetGroup& some, VelaTempTable* result)
{
    NameSources(some);
    VelaValue* values = result->AppendRows(some.Count(), mSources.data());
    for (const VExprField* field : mFields)
        FillColumn(*field, some, values++);
}

// Record sets name rows as the context does; the result, by row id.
void FieldRows::NameSources(const VelaRecSetGroup& some)
{
    const size_t tables = mContext.tables->size();
    mSources.assign(some.Rows(), some.Rows() + some.Count() * tables);
    for (size_t table = 0; table < tables; table++) {
        TableColumns* columns = (*mContext.columns)[table];
        const uint32_t* rowIDs = columns ? columns->RowIDs() : nullptr;
        for (size_t i = table; rowIDs && i < mSources.size(); i += tables)
            mSources[i] = rowIDs[mSources[i]];
    }
}

// values: where the value of the first row goes; that of the next one is as many values on as there are outputs.
void FieldRows::FillColumn(const VExprField& field, const VelaRecSetGroup& some, VelaValue* values)
{
    if (const ColumnData* data = field.LoadedColumn(mContext)) {
        data->GetValues(some.Rows() + field.Table(), mContext.tables->size(), some.Count(), &mTexts,
                        values, mFields.size());
        return;
    }
    VelaEvalContext context = mContext;
    for (size_t i = 0; i < some.Count(); i++) {
        const VelaRecSet recSet = some.At(i);
        context.recSet = &recSet;
        field.Evaluate(context, &values[i * mFields.size()]);
    }
}

}   // namespace vela
