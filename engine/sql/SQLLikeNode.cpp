#include "engine/sql/SQLLikeNode.h"

#include "engine/query/VExprCompareLike.h"
#include "engine/query/VExprNot.h"

namespace vela {

SQLLikeNode::SQLLikeNode(SQLScalarExpNode* subject, bool negated)
    : mSubject(subject), mNegated(negated)
{
    GrowOver(mSubject);
}

void SQLLikeNode::SetPattern(SQLScalarExpNode* pattern)
{
    mPattern = pattern;
    GrowOver(mPattern);
}

void SQLLikeNode::SetEscape(SQLScalarExpNode* escape)
{
    mEscape = escape;
    GrowOver(mEscape);
}

void SQLLikeNode::Describe(string* text) const
{
    DescribeChild(mSubject, text);
    *text += mNegated ? " NOT LIKE " : " LIKE ";
    DescribeChild(mPattern, text);
    if (mEscape)
        *text += " ESCAPE ";
    DescribeChild(mEscape, text);
}

VelaExprPtr SQLLikeNode::ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                           VelaStatus* status) const
{
    if (!mSubject || !mPattern)
        return nullptr;
    VelaExprPtr subject = mSubject->ConvertToVelaExpr(names, tables, status);
    if (!subject)
        return nullptr;
    VelaExprPtr pattern = mPattern->ConvertToVelaExpr(names, tables, status);
    if (!pattern)
        return nullptr;
    VelaExprPtr escape = mEscape ? mEscape->ConvertToVelaExpr(names, tables, status) : nullptr;
    if (mEscape && !escape)
        return nullptr;
    VelaExprPtr like = std::make_unique<VExprCompareLike>(std::move(subject), std::move(pattern),
                                                          std::move(escape));
    return mNegated ? std::make_unique<VExprNot>(std::move(like)) : std::move(like);
}

}   // namespace vela
