#include "engine/sql/SQLCreateTableNode.h"

namespace vela {

void SQLCreateTableNode::Describe(string* text) const
{
    *text += "CREATE TABLE ";
    DescribeText(mTableName, text);
    *text += " (";
    DescribeList(mColumns, text);
    *text += ')';
}

}   // namespace vela
