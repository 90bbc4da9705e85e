#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// UPDATE table SET columns = values [WHERE condition].
class SQLUpdateNode : public SQLSyntaxNode {
public:
    explicit SQLUpdateNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    [[nodiscard]] bool IsUpdate() const override { return true; }

    string mTableName;
    SimpleVector<string> mColumns;
    SimpleVector<SQLScalarExpPtr> mValues;   // one for each of mColumns
    SQLScalarExpPtr mWhere;                  // null when there is none
};

}   // namespace vela
