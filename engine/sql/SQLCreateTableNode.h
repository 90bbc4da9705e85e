#pragma once

#include "engine/sql/SQLColumnDefNode.h"

namespace vela {

// CREATE TABLE table (columns).
class SQLCreateTableNode : public SQLSyntaxNode {
public:
    explicit SQLCreateTableNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsCreateTable() const override { return true; }

    SQLText mTableName;
    ArenaList<SQLColumnDefNode*> mColumns;
};

}   // namespace vela
