#pragma once

#include "engine/query/VelaFunctions.h"
#include "engine/sql/SQLScalarExpNode.h"

namespace vela {

// A call of a built-in function, with up to three arguments:
//
//   POSITION(x IN y)            y, x
//   SUBSTRING(s FROM n FOR m)   s, n, m
//   TRIM(word c FROM s)         s, c, word as a literal
//   all others                  their argument first; COUNT(*) has none
class SQLFunctionNode : public SQLScalarExpNode {
public:
    enum Argument { kFirst, kSecond, kThird };

    explicit SQLFunctionNode(VelaFuncCode code) : mCode(code) {}

    void SetArgument(Argument which, SQLScalarExpNode* argument);
    // DISTINCT before the argument of an aggregate.
    void SetDistinct(bool distinct) { mDistinct = distinct; }

    void Describe(string* text) const override;
    [[nodiscard]] VelaExprPtr ConvertToVelaExpr(const SQLNames& names, const SQLTables& tables,
                                                VelaStatus* status) const override;

private:
    void DescribeArguments(string* text) const;
    void DescribeTrim(string* text) const;

    VelaFuncCode mCode;
    SQLScalarExpNode* mArguments[3] = {};
    bool mDistinct = false;
};

}   // namespace vela
