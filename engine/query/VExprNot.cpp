#include "engine/query/VExprNot.h"

#include "engine/query/ExprOperands.h"

namespace vela {

VExprNot::VExprNot(VelaExprPtr operand) : VelaExpr(ExprKind::kNot), mOperand(std::move(operand)) {}

VelaDataType VExprNot::GetType(const SimpleVector<VelaTable*>&) const
{
    return kTypeInteger;
}

bool VExprNot::Evaluate(const VelaEvalContext& context, VelaValue* result) const
{
    VelaValue value;
    if (!mOperand || !mOperand->Evaluate(context, &value))
        return false;
    result->SetInteger(value.GetInteger() == 0);
    return true;
}

string VExprNot::Description() const
{
    return JoinDescription({"NOT (", DescriptionOf(mOperand.get()), ")"});
}

long VExprNot::ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const
{
    if (mOperand)
        return mOperand->ChooseWildcardTable(recSet, single);
    if (single)
        *single = true;
    return -1;
}

bool VExprNot::Valid() const
{
    return IsPresentAndValid(mOperand.get());
}

bool VExprNot::HasAggregate() const
{
    return AnyHasAggregate({mOperand.get()});
}

void VExprNot::CollectTables(std::vector<bool>* tables) const
{
    CollectTablesOf({mOperand.get()}, tables);
}

}   // namespace vela
