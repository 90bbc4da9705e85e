#include "engine/sql/SQLDropIndexNode.h"

namespace vela {

void SQLDropIndexNode::Describe(string* text) const
{
    *text += "DROP INDEX ";
    DescribeText(mSpecifier, text);
}

}   // namespace vela
