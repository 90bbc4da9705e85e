#include "engine/query/GroupTotals.h"

#include <algorithm>

#include "engine/query/AggregateState.h"
#include "engine/query/ExprShape.h"

namespace vela {

namespace {

// Few enough for their values to stay in the processor's nearer caches between two columns.
constexpr size_t kGroupsAtOnce = 256;

const VExprAggregate* AsAggregate(const VelaExpr& expr)
{
    return expr.Kind() == ExprKind::kAggregate ? static_cast<const VExprAggregate*>(&expr)
                                               : nullptr;
}

// The column that the aggregate adds up; null for another operand.
const ColumnData* ColumnOf(const VExprAggregate& aggregate, const VelaEvalContext& context)
{
    const VExprField* field = AsField(aggregate.Operand());
    const ColumnData* column = field ? field->LoadedColumn(context) : nullptr;
    const bool isIt = column && column->form != ColumnData::Form::kTexts && column->nulls.empty();
    return isIt ? column : nullptr;
}

bool CountsAll(const VExprAggregate& aggregate)
{
    return aggregate.Func() == kFuncCount && aggregate.Operand() == nullptr;
}

}   // namespace

bool GroupTotals::Serves(const std::vector<VelaExprPtr>& outputs, const VelaEvalContext& context)
{
    return std::all_of(outputs.begin(), outputs.end(), [&](const VelaExprPtr& output) {
        const VExprAggregate* aggregate = AsAggregate(*output);
        if (aggregate == nullptr)
            return AsField(output.get()) != nullptr;
        return CountsAll(*aggregate) ||
               (!aggregate->IsDistinct() && ColumnOf(*aggregate, context) != nullptr);
    });
}

GroupTotals::GroupTotals(const std::vector<VelaExprPtr>& outputs, const VelaEvalContext& context,
                         const RecSetList& list, const RecSetGrouper& grouper)
    : mOutputs(outputs), mContext(context), mList(list), mGrouper(grouper), mTotals(outputs.size())
{
    for (size_t i = 0; i < outputs.size(); i++) {
        const VExprAggregate* aggregate = AsAggregate(*outputs[i]);
        if (aggregate && !CountsAll(*aggregate))
            AddUp(*aggregate, &mTotals[i]);
    }
}

void GroupTotals::Append(const std::vector<uint32_t>& groups, VelaTempTable* result)
{
    result->ReserveRows(groups.size());
    for (size_t start = 0; start < groups.size(); start += kGroupsAtOnce)
        AppendSome(groups.data() + start, std::min(kGroupsAtOnce, groups.size() - start), result);
}

void GroupTotals::AppendSome(const uint32_t* groups, size_t count, VelaTempTable* result)
{
    VelaValue* values = result->AppendRows(count, nullptr);
    const size_t width = mOutputs.size();
    for (size_t i = 0; i < width; i++) {
        if (const VExprField* field = AsField(mOutputs[i].get())) {
            FillColumn(*field, groups, count, values + i);
            continue;
        }
        const VExprAggregate* aggregate = AsAggregate(*mOutputs[i]);
        for (size_t row = 0; row < count; row++)
            values[row * width + i] = Result(*aggregate, mTotals[i], groups[row]);
    }
}

// values: where the value of the first group goes; that of the next one is as many values on as there are outputs.
void GroupTotals::FillColumn(const VExprField& field, const uint32_t* groups, size_t count,
                             VelaValue* values)
{
    const size_t width = mOutputs.size();
    if (const ColumnData* column = field.LoadedColumn(mContext)) {
        mRows.resize(count);
        for (size_t i = 0; i < count; i++)
            mRows[i] = mList.At(mGrouper.FirstOf(groups[i])).RowID(field.Table());
        column->GetValues(mRows.data(), 1, count, &mTexts, values, width);
        return;
    }
    VelaEvalContext context = mContext;
    for (size_t i = 0; i < count; i++) {
        const VelaRecSet first = mList.At(mGrouper.FirstOf(groups[i]));
        context.recSet = &first;
        field.Evaluate(context, &values[i * width]);
    }
}

// A group has fewer than 2^32 rows, so their Integers add up in 64 bits.
void GroupTotals::AddUp(const VExprAggregate& aggregate, Totals* totals) const
{
    const ColumnData& column = *ColumnOf(aggregate, mContext);
    const size_t groups = mGrouper.GroupCount();
    const bool areDoubles = column.form == ColumnData::Form::kDoubles;
    totals->column = &column;
    totals->table = AsField(aggregate.Operand())->Table();
    switch (aggregate.Func()) {
        case kFuncSum:
        case kFuncAvg:
            if (areDoubles) {
                totals->doubles.assign(groups, 0.0);
                ForEachRow(totals->table, [&](uint32_t group, uint32_t row) {
                    totals->doubles[group] += column.doubles[row];
                });
            } else {
                totals->integers.assign(groups, 0);
                ForEachRow(totals->table, [&](uint32_t group, uint32_t row) {
                    totals->integers[group] += column.integers[row];
                });
            }
            break;
        case kFuncMin:
        case kFuncMax:
            if (areDoubles)
                FindExtremes(column.doubles, aggregate.Func() == kFuncMin, totals);
            else
                FindExtremes(column.integers, aggregate.Func() == kFuncMin, totals);
            break;
        default:
            break;   // a count is the group's
    }
}

// Calls take(group, row) for each record set, with its row of that table.
template <class Take>
void GroupTotals::ForEachRow(size_t table, const Take& take) const
{
    const VelaRecSetGroup all = mList.Group(0, mList.Count());
    const uint32_t* groupOf = mGrouper.GroupOf();
    for (size_t i = 0; i < all.Count(); i++)
        take(groupOf[i], all.RowID(i, table));
}

template <class Number>
void GroupTotals::FindExtremes(const LargeVector<Number>& numbers, bool smallest,
                               Totals* totals) const
{
    totals->extremes.assign(mGrouper.GroupCount(), kInvalidRowID);
    ForEachRow(totals->table, [&](uint32_t group, uint32_t row) {
        uint32_t& extreme = totals->extremes[group];
        const bool isBeyond =
            extreme == kInvalidRowID ||
            (smallest ? numbers[row] < numbers[extreme] : numbers[extreme] < numbers[row]);
        extreme = isBeyond ? row : extreme;
    });
}

VelaValue GroupTotals::Result(const VExprAggregate& aggregate, const Totals& totals,
                              uint32_t group) const
{
    const uint32_t count = mGrouper.CountOf(group);
    if (!totals.extremes.empty()) {
        VelaValue value;
        totals.column->GetValue(totals.extremes[group], &value);
        return value;
    }
    if (!totals.doubles.empty())
        return AggregateState::OfDoubles(aggregate.Func(), count, totals.doubles[group]).Result();
    if (!totals.integers.empty())
        return AggregateState::OfIntegers(aggregate.Func(), count, totals.integers[group]).Result();
    return CountValue(count);
}

}   // namespace vela
