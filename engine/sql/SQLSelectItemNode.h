#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// One item of a select list. Its alias is the expression's.
class SQLSelectItemNode : public SQLSyntaxNode {
public:
    explicit SQLSelectItemNode(SQLScalarExpNode* expression) : mExpression(expression) {}

    void Describe(string* text) const override;

    SQLScalarExpNode* mExpression;
};

}   // namespace vela
