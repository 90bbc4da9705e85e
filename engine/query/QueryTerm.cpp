#include "engine/query/QueryTerm.h"

#include "engine/query/VExprAndOr.h"

namespace vela {

namespace {

// A missing term is UNKNOWN and rejects nothing. Nesting may be deep: the open conjunctions wait in
// a list.
std::vector<const VelaExpr*> ConjunctionTerms(const VelaExpr& conjunction)
{
    std::vector<const VelaExpr*> waiting = {&conjunction};
    std::vector<const VelaExpr*> terms;
    while (!waiting.empty()) {
        const VelaExpr* expr = waiting.back();
        waiting.pop_back();
        if (expr->Kind() != ExprKind::kAnd) {
            terms.push_back(expr);
            continue;
        }
        const auto& nested = static_cast<const VExprAnd&>(*expr).Terms();
        for (size_t i = nested.size(); i > 0; i--) {
            if (nested[i - 1])
                waiting.push_back(nested[i - 1].get());
        }
    }
    return terms;
}

}   // namespace

bool QueryTerm::Keeps(const VelaEvalContext& context) const
{
    VelaValue value;
    const bool known = expr->Evaluate(context, &value);
    return value.GetInteger() != 0 || (inConjunction && !known);
}

std::vector<QueryTerm> SplitIntoTerms(const VelaExpr& where)
{
    if (where.Kind() != ExprKind::kAnd)
        return {QueryTerm{&where, false}};
    std::vector<QueryTerm> terms;
    for (const VelaExpr* term : ConjunctionTerms(where))
        terms.push_back(QueryTerm{term, true});
    return terms;
}

}   // namespace vela
