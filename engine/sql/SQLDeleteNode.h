#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// DELETE FROM table [WHERE condition].
class SQLDeleteNode : public SQLSyntaxNode {
public:
    explicit SQLDeleteNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsDelete() const override { return true; }

    SQLText mTableName;
    SQLScalarExpNode* mWhere = nullptr;   // null when there is none
};

}   // namespace vela
