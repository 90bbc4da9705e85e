#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// DELETE FROM table [WHERE condition].
class SQLDeleteNode : public SQLSyntaxNode {
public:
    explicit SQLDeleteNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsDelete() const override { return true; }

    string mTableName;
    SQLScalarExpPtr mWhere;   // null when there is none
};

}   // namespace vela
