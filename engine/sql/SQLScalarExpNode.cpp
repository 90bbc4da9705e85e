#include "engine/sql/SQLScalarExpNode.h"

#include <algorithm>

namespace vela {

bool SQLScalarExpNode::ConvertToExprList(const SQLNames& names, const SQLTables& tables,
                                         SimpleVector<VelaExprPtr>* list, VelaStatus* status,
                                         SimpleVector<string>*, SimpleVector<uint32_t>*) const
{
    VelaExprPtr expr = ConvertToVelaExpr(names, tables, status);
    if (!expr)
        return false;
    expr->SetName(Alias().empty() ? Description() : Alias().ToString());
    list->push_back(std::move(expr));
    return true;
}

void SQLScalarExpNode::GrowOver(const SQLScalarExpNode* child)
{
    if (child)
        mHeight = std::max(mHeight, child->mHeight + 1);
}

}   // namespace vela
