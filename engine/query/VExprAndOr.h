#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// All terms true. A term is true when its integer form isn't 0. The first FALSE term ends the
// evaluation with the Integer 0; else the result is the Integer 1, with a false flag (UNKNOWN) when
// a term was UNKNOWN or missing. So UNKNOWN leaves a 1. No terms: TRUE.
class VExprAnd : public VelaExpr {
public:
    explicit VExprAnd(SimpleVector<VelaExprPtr> terms);

    [[nodiscard]] const SimpleVector<VelaExprPtr>& Terms() const { return mTerms; }

    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // The first term's table that comes with single; else the first table that a term gives, and
    // single is whether every term's own single is true and none gives another table.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    SimpleVector<VelaExprPtr> mTerms;
};

// Any term true. The first TRUE term ends the evaluation with the Integer 1; else the result is the
// Integer 0, with a false flag (UNKNOWN) when a term was UNKNOWN or missing. No terms: FALSE.
class VExprOr : public VelaExpr {
public:
    explicit VExprOr(SimpleVector<VelaExprPtr> terms);

    [[nodiscard]] const SimpleVector<VelaExprPtr>& Terms() const { return mTerms; }

    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    [[nodiscard]] string Description() const override;
    // As VExprAnd.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    [[nodiscard]] bool Valid() const override;
    [[nodiscard]] bool HasAggregate() const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    SimpleVector<VelaExprPtr> mTerms;
};

}   // namespace vela
