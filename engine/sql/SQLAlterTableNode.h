#pragma once

#include "engine/sql/SQLColumnDefNode.h"
#include "engine/sql/SQLDropBehavior.h"

namespace vela {

// ALTER TABLE table and one action.
class SQLAlterTableNode : public SQLSyntaxNode {
public:
    enum Action {
        kAddColumn = 0,
        kSetDefault = 1,
        kDropDefault = 2,
        kDropColumn = 3,
        kRenameColumn = 4,
        kModifyColumn = 5,
        kRenameTable = 6,
    };

    explicit SQLAlterTableNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsAlterTable() const override { return true; }

    SQLText mTableName;
    Action mAction = kAddColumn;
    // The definition, or for actions on a column that is there just its name, and in kSetDefault
    // the default; null for kRenameTable.
    SQLColumnDefNode* mColumn = nullptr;
    SQLText mNewName;   // for the two that rename
    SQLDropBehavior mBehavior = SQLDropBehavior::kNotWritten;

private:
    void DescribeColumnAction(string* text) const;
};

}   // namespace vela
