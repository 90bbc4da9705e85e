#include "engine/sql/SQLDropTableNode.h"

namespace vela {

void SQLDropTableNode::Describe(string* text) const
{
    *text += "DROP TABLE ";
    DescribeText(mTableName, text);
    *text += DropBehaviorText(mBehavior);
}

}   // namespace vela
