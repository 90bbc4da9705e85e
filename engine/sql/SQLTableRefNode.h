#pragma once

#include "engine/sql/SQLSyntaxNode.h"

namespace vela {

// A table in a FROM list.
class SQLTableRefNode : public SQLSyntaxNode {
public:
    explicit SQLTableRefNode(const SQLText& tableName) : mTableName(tableName) {}

    void Describe(string* text) const override;
    // The name that qualifies the table's columns: the range variable, else the table's name.
    [[nodiscard]] const SQLText& Qualifier() const
    {
        return mRangeVariable.empty() ? mTableName : mRangeVariable;
    }

    SQLText mTableName;
    SQLText mRangeVariable;   // empty when there is none
};

}   // namespace vela
