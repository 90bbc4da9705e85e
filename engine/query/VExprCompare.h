#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// The comparison operators: their characters packed into one number, the first in the high byte.
constexpr uint16_t kOpLess = '<';
constexpr uint16_t kOpGreater = '>';
constexpr uint16_t kOpNotEqual = '!' << 8 | '=';
constexpr uint16_t kOpLessEqual = '<' << 8 | '=';
constexpr uint16_t kOpEqual = '=' << 8 | '=';
constexpr uint16_t kOpGreaterEqual = '>' << 8 | '=';

// left op right, as the Integer 1 or 0. The operands' types decide how they are compared:
//
//   either a Boolean                             both are coerced to Boolean first
//   left neither a String nor a date or time     as Doubles when one is a Double, else as Integers
//   else                                         as texts, byte by byte: stored texts, without the
//                                                prefix "DATE " and the like; where a String meets
//                                                a date or time, such a prefix is dropped from it
//
// NULL takes part with its integer form 0, double form 0.0 or text "NULL".
// What an UNKNOWN leaves in result: nothing when an operand is missing; else what the left operand
// left there, its value when the right operand is the UNKNOWN one.
class VExprCompare : public VelaExpr {
public:
    // op is one of the above.
    VExprCompare(VelaExprPtr left, uint16_t op, VelaExprPtr right);

    // Null when missing.
    [[nodiscard]] const VelaExpr* Left() const { return mLeft.get(); }
    [[nodiscard]] const VelaExpr* Right() const { return mRight.get(); }
    [[nodiscard]] uint16_t Op() const { return mOp; }

    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The left operand's answer, else the right one's; single is whether they don't name two.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    VelaExprPtr mLeft;
    VelaExprPtr mRight;
    uint16_t mOp;
};

}   // namespace vela
