#include "engine/sql/SQLNotNode.h"

#include "engine/query/VExprNot.h"

namespace vela {

SQLNotNode::SQLNotNode(SQLScalarExpNode* operand) : mOperand(operand)
{
    GrowOver(mOperand);
}

void SQLNotNode::Describe(string* text) const
{
    *text += "NOT (";
    DescribeChild(mOperand, text);
    *text += ')';
}

VelaExprPtr SQLNotNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                          VelaStatus* status) const
{
    VelaExprPtr operand = mOperand ? mOperand->ConvertToVelaExpr(names, tables, status) : nullptr;
    return operand ? std::make_unique<VExprNot>(std::move(operand)) : nullptr;
}

}   // namespace vela
