#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// NOT before an operand. The parser never makes one: it drops a NOT that is not followed by LIKE.
class SQLNotNode : public SQLScalarExpNode {
public:
    explicit SQLNotNode(SQLScalarExpNode* operand);

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    SQLScalarExpNode* mOperand;
};

}   // namespace vela
