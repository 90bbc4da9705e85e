#pragma once

#include "engine/query/VelaExpr.h"
#include "engine/query/VelaFunctions.h"

namespace vela {

// An aggregate over the record sets of the context's group. NULL and UNKNOWN operands are skipped.
//
//   COUNT     how many; of none the Integer 0. Without an operand: the record sets, COUNT(*)
//   SUM       exact over Integers and Booleans: an Integer when it fits one, else a Double;
//             a Double once a Double or a String (by its leading number) is among the operands
//   AVG       a Double
//   MIN, MAX  the operand value itself, the first of equals. Two numbers compare as such, else the
//             texts do
//
// SUM, AVG, MIN and MAX of none are a NULL Integer, with a true flag. DISTINCT drops values that
// equal one already taken (see DistinctValues.h); MIN and MAX ignore it.
// UNKNOWN, result untouched: there is no group, or no operand where one is needed.
// An aggregate in the operand of another is evaluated over the same group.
class VExprAggregate : public VelaExpr {
public:
    // func is kFuncAvg to kFuncSum. operand is null for COUNT(*).
    VExprAggregate(VelaFuncCode func, VelaExprPtr operand, bool distinct);

    [[nodiscard]] VelaFuncCode Func() const { return mFunc; }
    [[nodiscard]] bool IsDistinct() const { return mDistinct; }
    // Null for COUNT(*).
    [[nodiscard]] const VelaExpr* Operand() const { return mOperand.get(); }

    // Always kTypeInteger, whatever Evaluate gives.
    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The operand's answer.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override { return true; }
    void CollectTables(std::vector<bool>* tables) const override;

private:
    [[nodiscard]] VelaValue RememberedResult(const VelaEvalContext& context) const;
    // The result over the context's group, with an operand.
    [[nodiscard]] VelaValue ResultOver(const VelaEvalContext& context) const;

    VelaExprPtr mOperand;
    VelaFuncCode mFunc;
    bool mDistinct;
    bool mHoldsAggregate;   // in the operand
};

}   // namespace vela
