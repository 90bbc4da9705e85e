#include "engine/sql/SQLColumnDefNode.h"

namespace vela {

void SQLColumnDefNode::Describe(string* text) const
{
    DescribeText(mName, text);
    *text += ' ';
    DescribeText(mTypeName, text);
    if (mDefault)
        *text += " DEFAULT ";
    DescribeChild(mDefault, text);
}

}   // namespace vela
