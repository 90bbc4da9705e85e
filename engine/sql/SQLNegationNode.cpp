#include "engine/sql/SQLNegationNode.h"

#include "engine/query/VExprConstant.h"
#include "engine/query/VExprMath.h"

namespace vela {

SQLNegationNode::SQLNegationNode(SQLScalarExpNode* operand) : mOperand(operand)
{
    GrowOver(mOperand);
}

void SQLNegationNode::Describe(string* text) const
{
    *text += "-(";
    DescribeChild(mOperand, text);
    *text += ')';
}

VelaExprPtr SQLNegationNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                               VelaStatus* status) const
{
    VelaExprPtr operand = mOperand ? mOperand->ConvertToVelaExpr(names, tables, status) : nullptr;
    if (!operand)
        return nullptr;
    VelaExprPtr zero = std::make_unique<VExprConstant>(VelaValue::Integer(0));
    return std::make_unique<VExprMath>(std::move(zero), '-', std::move(operand));
}

}   // namespace vela
