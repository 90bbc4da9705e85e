#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A column's definition. Where a statement only names a column, the rest is empty.
class SQLColumnDefNode : public SQLSyntaxNode {
public:
    // Name, type and default; PRIMARY KEY and NOT NULL are not printed.
    void Describe(string* text) const override;

    SQLText mName;
    SQLText mTypeName;   // as written; whether there is such a type is seen at execution
    bool mPrimaryKey = false;
    bool mNotNull = false;
    SQLScalarExpNode* mDefault = nullptr;   // null when there is none
};

}   // namespace vela
