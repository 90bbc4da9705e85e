#include "engine/query/QueryPlan.h"

#include <algorithm>

#include "runtime/ShortArray.h"

namespace vela {

namespace {

constexpr uint32_t kAnyRow = 0;

// By table; few statements have more tables.
template <class T>
using PerTable = ShortArray<T, 8>;

size_t FirstUnbound(const PerTable<uint32_t>& rows)
{
    size_t table = 0;
    while (rows[table] != kInvalidRowID)
        table++;
    return table;
}

std::vector<QueryLevel> OrderTables(const VelaExpr* where, size_t tableCount)
{
    std::vector<QueryLevel> levels(tableCount);
    PerTable<uint32_t> rows(tableCount, kInvalidRowID);
    const VelaRecSet recSet(rows.data());
    for (size_t i = 0; i < tableCount; i++) {
        bool single = true;
        const long chosen = where ? where->ChooseWildcardTable(recSet, &single) : -1;
        if (where && chosen < 0)
            single = false;
        levels[i].table = chosen < 0 ? FirstUnbound(rows) : static_cast<size_t>(chosen);
        levels[i].reversed = !(single && i + 1 == tableCount);
        rows[levels[i].table] = kAnyRow;
    }
    return levels;
}

// What the place of a term in the plan follows from.
struct TermTables {
    size_t count = 0;       // how many tables it refers to
    size_t lastLevel = 0;   // the highest of their levels
};

// tables is room for the work.
TermTables TablesOf(const VelaExpr& term, const PerTable<size_t>& levelOf,
                    std::vector<bool>* tables)
{
    tables->assign(levelOf.size(), false);
    term.CollectTables(tables);
    TermTables result;
    for (size_t table = 0; table < levelOf.size(); table++) {
        if (!(*tables)[table])
            continue;
        result.count++;
        result.lastLevel = std::max(result.lastLevel, levelOf[table]);
    }
    return result;
}

}   // namespace

QueryPlan MakeQueryPlan(const VelaExpr* where, size_t tableCount)
{
    QueryPlan plan;
    plan.levels = OrderTables(where, tableCount);
    if (where == nullptr)
        return plan;
    PerTable<size_t> levelOf(tableCount, 0);
    for (size_t level = 0; level < tableCount; level++)
        levelOf[plan.levels[level].table] = level;
    std::vector<bool> room;
    for (const QueryTerm& term : SplitIntoTerms(*where)) {
        const TermTables tables = TablesOf(*term.expr, levelOf, &room);
        if (tables.count == 0) {
            plan.constantTerms.push_back(term);
            continue;
        }
        QueryLevel& level = plan.levels[tables.lastLevel];
        (tables.count == 1 ? level.ownTerms : level.joinTerms).push_back(term);
    }
    return plan;
}

}   // namespace vela
