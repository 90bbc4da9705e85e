#pragma once

#include "engine/sql/SQLSelectNode.h"

namespace vela {

// INSERT INTO table [(columns)] and one of DEFAULT VALUES, VALUES (values), SELECT.
class SQLInsertNode : public SQLSyntaxNode {
public:
    explicit SQLInsertNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsInsert() const override { return true; }

    SQLText mTableName;
    ArenaList<SQLText> mColumns;   // empty without a column list
    ArenaList<SQLScalarExpNode*> mValues;
    SQLSelectNode* mSelect = nullptr;   // null unless the rows come from a SELECT
    bool mDefaultValues = false;
};

}   // namespace vela
