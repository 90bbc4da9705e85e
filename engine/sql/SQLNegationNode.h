#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A minus sign before an operand. It computes 0 - operand.
class SQLNegationNode : public SQLScalarExpNode {
public:
    explicit SQLNegationNode(SQLScalarExpNode* operand);

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    SQLScalarExpNode* mOperand;
};

}   // namespace vela
