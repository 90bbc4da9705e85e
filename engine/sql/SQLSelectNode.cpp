#include "engine/sql/SQLSelectNode.h"

namespace vela {

namespace {

// A clause that is not there prints nothing.

template <class Node>
void DescribeListClause(const char* keyword, const ArenaList<Node*>& nodes, string* text)
{
    if (nodes.empty())
        return;
    *text += keyword;
    DescribeList(nodes, text);
}

void DescribeCondition(const char* keyword, const SQLScalarExpNode* condition, string* text)
{
    if (!condition)
        return;
    *text += keyword;
    condition->Describe(text);
}

}   // namespace

void SQLSelectNode::Describe(string* text) const
{
    *text += mDistinct ? "SELECT DISTINCT " : "SELECT ";
    DescribeList(mItems, text);
    DescribeListClause(" FROM ", mTables, text);
    DescribeCondition(" WHERE ", mWhere, text);
    DescribeListClause(" GROUP BY ", mGroupBy, text);
    DescribeCondition(" HAVING ", mHaving, text);
    DescribeOrderBy(text);
}

void SQLSelectNode::DescribeOrderBy(string* text) const
{
    for (size_t i = 0; i < mOrderBy.size(); i++) {
        *text += i == 0 ? " ORDER BY " : ", ";
        DescribeChild(mOrderBy[i].column, text);
        if (mOrderBy[i].isDescending)
            *text += " DESC";
    }
}

}   // namespace vela
