#pragma once

#include "engine/sql/SQLDropBehavior.h"
#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// DROP TABLE table [RESTRICT | CASCADE].
class SQLDropTableNode : public SQLSyntaxNode {
public:
    explicit SQLDropTableNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsDropTable() const override { return true; }

    string mTableName;
    SQLDropBehavior mBehavior = SQLDropBehavior::kNotWritten;
};

}   // namespace vela
