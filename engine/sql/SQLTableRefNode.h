#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// A table in a FROM list.
class SQLTableRefNode : public SQLSyntaxNode {
public:
    explicit SQLTableRefNode(const string& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    // The name that qualifies the table's columns: the range variable, else the table's name.
    [[nodiscard]] const string& Qualifier() const
    {
        return mRangeVariable.empty() ? mTableName : mRangeVariable;
    }

    string mTableName;
    string mRangeVariable;   // empty when there is none
};

}   // namespace vela
