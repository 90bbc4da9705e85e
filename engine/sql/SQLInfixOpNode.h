#pragma once

#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// An operator between operands: + - * / = <> < <= > >= with two of them, AND and OR with two or more.
class SQLInfixOpNode : public SQLScalarExpNode {
public:
    explicit SQLInfixOpNode(const SQLText& op) : mOperator(op) {}

    void AddOperand(BlockArena* arena, SQLScalarExpNode* operand);

    void Describe(string* text) const override;
    // Null, without a message, for an unknown operator or the wrong number of operands.
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    [[nodiscard]] bool IsWordOperator() const;
    [[nodiscard]] VelaExprPtr ConvertJunction(const SQLNames& names, const SQLTables& tables,
                                              VelaStatus* status) const;
    [[nodiscard]] VelaExprPtr ConvertPair(const SQLNames& names, const SQLTables& tables,
                                          VelaStatus* status) const;

    SQLText mOperator;
    ArenaList<SQLScalarExpNode*> mOperands;
};

}   // namespace vela
