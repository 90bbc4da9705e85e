#include "engine/sql/SQLCreateIndexNode.h"

namespace vela {

void SQLCreateIndexNode::Describe(string* text) const
{
    *text += "CREATE INDEX ";
    DescribeText(mIndexName, text);
    *text += " ON ";
    DescribeText(mTableName, text);
    *text += " (";
    DescribeNames(mColumns, text);
    *text += ')';
}

}   // namespace vela
