#include "engine/sql/SQLSelectItemNode.h"

namespace vela {

void SQLSelectItemNode::Describe(string* text) const
{
    DescribeChild(mExpression, text);
    if (!mExpression || mExpression->Alias().empty())
        return;
    *text += " AS ";
    DescribeText(mExpression->Alias(), text);
}

}   // namespace vela
