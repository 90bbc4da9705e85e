#pragma once

#include "engine/query/VelaExpr.h"

namespace vela {

// A value that was known before the rows. A NULL constant evaluates to its NULL with a true flag.
class VExprConstant : public VelaExpr {
public:
    explicit VExprConstant(const VelaValue& value);

    [[nodiscard]] const VelaValue& Value() const { return mValue; }

    [[nodiscard]] VelaDataType GetType(const SimpleVector<VelaTable*>& tables) const override;
    bool Evaluate(const VelaEvalContext& context, VelaValue* result) const override;
    // A literal of SQL with that value.
    [[nodiscard]] string Description() const override;
    // None; single is true.
    long ChooseWildcardTable(const VelaRecSet& recSet, bool* single) const override;
    void CollectTables(std::vector<bool>* tables) const override;

private:
    VelaValue mValue;
};

}   // namespace vela
