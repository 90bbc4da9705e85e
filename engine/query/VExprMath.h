#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// left op right, for '+', '-', '*' and '/'. The operands' types decide:
//
//   left a String               '+' joins the texts, the right one converted to a String;
//                               another operator is UNKNOWN
//   neither Integer nor Double  UNKNOWN
//   no Double                   32-bit Integer arithmetic of the integer forms; '+', '-', '*' wrap,
//                               '/' truncates toward zero
//   else                        Double arithmetic of the double forms, by the IEEE rules
//
// What an UNKNOWN leaves in result: nothing when an operand is missing; else what the left operand
// left, but a NULL Integer after an integer division by zero.
class VExprMath : public VelaExpr {
public:
    VExprMath(VelaExprPtr left, char op, VelaExprPtr right);

    // Null when missing.
    [[nodiscard]] const VelaExpr* Left() const { return mLeft.get(); }
    [[nodiscard]] const VelaExpr* Right() const { return mRight.get(); }

    // By the table above; kTypeNone for what is UNKNOWN there.
    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The left operand's answer, else the right one's; single is whether there is one.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    VelaExprPtr mLeft;
    VelaExprPtr mRight;
    char mOp;
};

}   // namespace vela
