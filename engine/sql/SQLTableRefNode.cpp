#include "engine/sql/SQLTableRefNode.h"

namespace vela {

void SQLTableRefNode::Describe(string* text) const
{
    DescribeText(mTableName, text);
    if (mRangeVariable.empty())
        return;
    *text += " AS ";
    DescribeText(mRangeVariable, text);
}

}   // namespace vela
