#pragma once

#include "engine/query/VelaExpr.h"
#include "engine/query/VelaFunctions.h"

namespace vela {

// A built-in function of one row. UNKNOWN, result untouched, when an argument is UNKNOWN or the
// function refuses (see VelaFuncEval). An absent argument is passed as a NULL value.
class VExprScalarFunc : public VelaExpr {
public:
    // Each argument may be null.
    VExprScalarFunc(VelaFuncCode func, VelaExprPtr arg1, VelaExprPtr arg2, VelaExprPtr arg3);

    // Null when absent.
    [[nodiscard]] const VelaExpr* Arg1() const { return mArg1.get(); }
    [[nodiscard]] const VelaExpr* Arg2() const { return mArg2.get(); }
    [[nodiscard]] const VelaExpr* Arg3() const { return mArg3.get(); }

    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The first answer of the arguments; single is whether the others name no other table.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    [[nodiscard]] string DescribeArguments() const;

    VelaFuncCode mFunc;
    VelaExprPtr mArg1;
    VelaExprPtr mArg2;
    VelaExprPtr mArg3;
};

}   // namespace vela
