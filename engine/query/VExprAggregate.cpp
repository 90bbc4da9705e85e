#include "engine/query/VExprAggregate.h"

#include "engine/query/AggregateMemo.h"
#include "engine/query/AggregateState.h"
#include "engine/query/ExprOperands.h"
#include "engine/query/ExprShape.h"

namespace vela {

VExprAggregate::VExprAggregate(VelaFuncCode func, VelaExprPtr operand, bool distinct)
    : VelaExpr(ExprKind::kAggregate),
      mOperand(std::move(operand)),
      mFunc(func),
      mDistinct(distinct),
      mHoldsAggregate(AnyHasAggregate({mOperand.get()}))
{}

VelaDataType VExprAggregate::GetType(const SimpleVector<VelaTable*>&) const
{
    return kTypeInteger;
}

bool VExprAggregate::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    if (!context.group)
        return false;
    if (!mOperand) {
        if (mFunc != kFuncCount)
            return false;
        *result = CountValue(context.group->Count());
        return true;
    }
    *result = context.nestedAggregates ? RememberedResult(context) : ResultOver(context);
    return true;
}

string VExprAggregate::Description() const
{
    return JoinDescription({VelaFuncName(mFunc), "(", mDistinct ? "DISTINCT " : "",
                            mOperand ? mOperand->Description() : "*", ")"});
}

long VExprAggregate::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    if (mOperand)
        return mOperand->ChooseWildcardTable(recSet, single);
    if (single)
        *single = true;
    return -1;
}

bool VExprAggregate::Valid() const
{
    return mOperand ? mOperand->Valid() : mFunc == kFuncCount;
}

void VExprAggregate::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mOperand.get()}, tables);
}

VelaValue VExprAggregate::RememberedResult(const VelaEvalContext& context) const
{
    if (const VelaValue* known = context.nestedAggregates->Find(this))
        return *known;
    VelaValue result = ResultOver(context);
    context.nestedAggregates->Add(this, result);
    return result;
}

VelaValue VExprAggregate::ResultOver(const VelaEvalContext& context) const
{
    AggregateState state(mFunc, mDistinct);
    const VExprField* field = AsField(mOperand.get());
    const ColumnData* column = field ? field->LoadedColumn(context) : nullptr;
    if (column && state.TakeColumn(*column, *context.group, field->Table()))
        return state.Result();

    AggregateMemo memo;
    VelaRecSet current;
    VelaEvalContext rowContext = context;
    rowContext.recSet = &current;
    if (mHoldsAggregate && !context.nestedAggregates)
        rowContext.nestedAggregates = &memo;

    VelaValue value;
    for (size_t i = 0; i < context.group->Count(); i++) {
        current = context.group->At(i);
        if (mOperand->Evaluate(rowContext, &value))
            state.Take(value);
    }
    return state.Result();
}

}   // namespace vela
