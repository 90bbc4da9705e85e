#include "engine/query/QueryTerm.h"

#include "engine/query/VExprAndOr.h"

namespace vela {

namespace {

std::vector<size_t> TablesOf(const VelaExpr& expr, size_t tableCount)
{
    std::vector<bool> refersTo(tableCount);
    expr.CollectTables(&refersTo);
    std::vector<size_t> tables;
    for (size_t table = 0; table < tableCount; table++) {
        if (refersTo[table])
            tables.push_back(table);
    }
    return tables;
}

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

std::vector<QueryTerm> SplitIntoTerms(const VelaExpr& where, size_t tableCount)
{
    if (where.Kind() != ExprKind::kAnd)
        return {QueryTerm{&where, false, TablesOf(where, tableCount)}};
    std::vector<QueryTerm> terms;
    for (const VelaExpr* term : ConjunctionTerms(where))
        terms.push_back(QueryTerm{term, true, TablesOf(*term, tableCount)});
    return terms;
}

}   // namespace vela
