#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A minus sign before an operand. It computes 0 - operand.
class SQLNegationNode : public SQLScalarExpNode {
public:
    explicit SQLNegationNode(SQLScalarExpPtr operand);

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    SQLScalarExpPtr mOperand;
};

}   // namespace vela
