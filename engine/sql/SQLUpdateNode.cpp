#include "engine/sql/SQLUpdateNode.h"

namespace vela {

void SQLUpdateNode::Describe(string* text) const
{
    *text += "UPDATE ";
    DescribeText(mTableName, text);
    *text += " SET ";
    for (size_t i = 0; i < mColumns.size(); i++) {
        if (i > 0)
            *text += ", ";
        DescribeText(mColumns[i], text);
        *text += '=';
        if (i < mValues.size() && mValues[i])
            mValues[i]->Describe(text);
        else
            *text += "???";
    }
    if (mWhere)
        *text += " WHERE ";
    DescribeChild(mWhere, text);
}

}   // namespace vela
