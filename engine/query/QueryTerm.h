#pragma once

#include <vector>

#include "engine/query/VelaExpr.h"

namespace vela {

// QueryTerm is a part of a WHERE that can reject a combination of rows by itself, as soon as every
// table that it refers to has a row. Borrows the expression.
//
// A conjunction leaves 0 exactly when one of its terms is FALSE, and 1 otherwise, UNKNOWN terms or
// not. So each of its terms rejects on FALSE alone. Any other WHERE is one term, judged by the
// integer form of what it leaves.
struct QueryTerm {
    const VelaExpr* expr = nullptr;
    bool inConjunction = false;

    // context has rows for all tables that it refers to.
    [[nodiscard]] bool Keeps(const VelaEvalContext& context) const;
};

// The terms of a WHERE, in the order in which they are written; nested conjunctions come apart.
[[nodiscard]] std::vector<QueryTerm> SplitIntoTerms(const VelaExpr& where);

}   // namespace vela
