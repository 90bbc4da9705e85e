#include "engine/sql/SQLSetOptionNode.h"

namespace vela {

void SQLSetOptionNode::Describe(string* text) const
{
    *text += "SET ";
    DescribeText(mName, text);
    *text += ' ';
    DescribeText(mValue, text);
}

}   // namespace vela
