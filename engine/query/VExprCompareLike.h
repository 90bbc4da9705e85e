#pragma once

#include "engine/query/LikePattern.h"
#include "engine/query/VelaExpr.h"

namespace vela {

// text LIKE pattern [ESCAPE escape], as the Integer 1 or 0. The operands are taken in the string
// form that comparisons use: stored texts for text-backed values, so that a Date is matched without
// the prefix "DATE "; NULL is "NULL".
//
// UNKNOWN, result untouched: an operand is UNKNOWN or missing, or the escape isn't one byte long.
class VExprCompareLike : public VelaExpr {
public:
    // escape may be null: then no character escapes.
    VExprCompareLike(VelaExprPtr text, VelaExprPtr pattern, VelaExprPtr escape);

    // Null when missing.
    [[nodiscard]] const VelaExpr* Text() const { return mText.get(); }
    [[nodiscard]] const VelaExpr* Pattern() const { return mPattern.get(); }
    [[nodiscard]] const VelaExpr* Escape() const { return mEscape.get(); }

    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The first answer of text, pattern, escape; single is whether the others name no other table.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    // Prepares mPrepared for the row's pattern and escape. False for UNKNOWN.
    bool PreparePattern(const VelaEvalContext& context) const;
    // False for UNKNOWN. There is an escape.
    bool EvaluateEscape(const VelaEvalContext& context, char* escape) const;
    void Prepare(std::string_view pattern, char escape) const;

    VelaExprPtr mText;
    VelaExprPtr mPattern;
    VelaExprPtr mEscape;
    mutable LikePattern mPrepared;   // of the last row; a constant pattern is prepared once
};

}   // namespace vela
