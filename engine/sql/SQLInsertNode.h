#pragma once

#include "engine/sql/SQLSelectNode.h"

namespace vela {

// INSERT INTO table [(columns)] and one of DEFAULT VALUES, VALUES (values), SELECT.
class SQLInsertNode : public SQLSyntaxNode {
public:
    explicit SQLInsertNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsInsert() const override { return true; }

    string mTableName;
    SimpleVector<string> mColumns;   // empty without a column list
    SimpleVector<SQLScalarExpPtr> mValues;
    std::unique_ptr<SQLSelectNode> mSelect;   // null unless the rows come from a SELECT
    bool mDefaultValues = false;
};

}   // namespace vela
