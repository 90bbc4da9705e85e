#include "engine/sql/SQLDeleteNode.h"

namespace vela {

void SQLDeleteNode::Describe(string* text) const
{
    *text += "DELETE FROM ";
    DescribeText(mTableName, text);
    if (mWhere)
        *text += " WHERE ";
    DescribeChild(mWhere, text);
}

}   // namespace vela
