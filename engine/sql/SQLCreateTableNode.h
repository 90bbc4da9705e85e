#pragma once

#include "engine/sql/SQLColumnDefNode.h"

namespace vela {

// CREATE TABLE table (columns).
class SQLCreateTableNode : public SQLSyntaxNode {
public:
    explicit SQLCreateTableNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsCreateTable() const override { return true; }

    string mTableName;
    SimpleVector<std::unique_ptr<SQLColumnDefNode>> mColumns;
};

}   // namespace vela
