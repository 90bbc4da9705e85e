#include "engine/sql/SQLInsertNode.h"

namespace vela {

void SQLInsertNode::Describe(string* text) const
{
    *text += "INSERT INTO ";
    DescribeText(mTableName, text);
    if (!mColumns.empty()) {
        *text += " (";
        DescribeNames(mColumns, text);
        *text += ')';
    }
    if (mDefaultValues) {
        *text += " DEFAULT VALUES";
    } else if (mSelect) {
        *text += ' ';
        mSelect->Describe(text);
    } else {
        *text += " VALUES (";
        DescribeList(mValues, text);
        *text += ')';
    }
}

}   // namespace vela
