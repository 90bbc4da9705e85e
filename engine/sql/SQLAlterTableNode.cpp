#include "engine/sql/SQLAlterTableNode.h"

namespace vela {

void SQLAlterTableNode::Describe(string* text) const
{
    *text += "ALTER TABLE ";
    DescribeText(mTableName, text);
    if (mAction == kRenameTable) {
        *text += " RENAME TO ";
        DescribeText(mNewName, text);
    } else if (!mColumn) {
        *text += " <no columnDef>";
    } else {
        DescribeColumnAction(text);
    }
}

void SQLAlterTableNode::DescribeColumnAction(string* text) const
{
    switch (mAction) {
        case kAddColumn:
        case kModifyColumn:
            *text += mAction == kAddColumn ? " ADD " : " MODIFY ";
            mColumn->Describe(text);
            break;
        case kDropColumn:
            *text += " DROP ";
            DescribeText(mColumn->mName, text);
            *text += DropBehaviorText(mBehavior);
            break;
        case kRenameColumn:
            *text += " RENAME ";
            DescribeText(mColumn->mName, text);
            *text += " TO ";
            DescribeText(mNewName, text);
            break;
        case kDropDefault:
            *text += " ALTER ";
            DescribeText(mColumn->mName, text);
            *text += " DROP DEFAULT";
            break;
        case kSetDefault:
            *text += " ALTER ";
            DescribeText(mColumn->mName, text);
            *text += " SET ";
            DescribeChild(mColumn->mDefault, text);
            break;
        case kRenameTable:
            break;
    }
}

}   // namespace vela
