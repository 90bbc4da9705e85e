#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// The Integer 1 when the operand's integer form is 0, else the Integer 0. UNKNOWN, result
// untouched, when the operand is UNKNOWN or missing.
class VExprNot : public VelaExpr {
public:
    explicit VExprNot(VelaExprPtr operand);

    // Null when missing.
    [[nodiscard]] const VelaExpr* Operand() const { return mOperand.get(); }

    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The operand's answer.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    VelaExprPtr mOperand;
};

}   // namespace vela
