#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// UPDATE table SET columns = values [WHERE condition].
class SQLUpdateNode : public SQLSyntaxNode {
public:
    explicit SQLUpdateNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsUpdate() const override { return true; }

    SQLText mTableName;
    ArenaList<SQLText> mColumns;
    ArenaList<SQLScalarExpNode*> mValues;   // one for each of mColumns
    SQLScalarExpNode* mWhere = nullptr;     // null when there is none
};

}   // namespace vela
