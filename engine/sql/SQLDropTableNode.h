#pragma once

#include "engine/sql/SQLDropBehavior.h"
#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// DROP TABLE table [RESTRICT | CASCADE].
class SQLDropTableNode : public SQLSyntaxNode {
public:
    explicit SQLDropTableNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsDropTable() const override { return true; }

    SQLText mTableName;
    SQLDropBehavior mBehavior = SQLDropBehavior::kNotWritten;
};

}   // namespace vela
