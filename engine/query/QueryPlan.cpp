#include "engine/query/QueryPlan.h"

namespace vela {

namespace {

constexpr uint32_t kAnyRow = 0;

size_t FirstUnbound(const std::vector<uint32_t>& rows)
{
    size_t table = 0;
    while (rows[table] != kInvalidRowID)
        table++;
    return table;
}

std::vector<QueryLevel> OrderTables(const VelaExpr* where, size_t tableCount)
{
    std::vector<QueryLevel> levels(tableCount);
    std::vector<uint32_t> rows(tableCount, kInvalidRowID);
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

std::vector<size_t> LevelsByTable(const std::vector<QueryLevel>& levels)
{
    std::vector<size_t> levelOf(levels.size());
    for (size_t level = 0; level < levels.size(); level++)
        levelOf[levels[level].table] = level;
    return levelOf;
}

size_t LastLevel(const QueryTerm& term, const std::vector<size_t>& levelOf)
{
    size_t last = 0;
    for (const size_t table : term.tables)
        last = levelOf[table] > last ? levelOf[table] : last;
    return last;
}

}   // namespace

QueryPlan MakeQueryPlan(const VelaExpr* where, size_t tableCount)
{
    QueryPlan plan;
    plan.levels = OrderTables(where, tableCount);
    if (where == nullptr)
        return plan;
    const std::vector<size_t> levelOf = LevelsByTable(plan.levels);
    for (QueryTerm& term : SplitIntoTerms(*where, tableCount)) {
        if (term.tables.empty()) {
            plan.constantTerms.push_back(term);
            continue;
        }
        QueryLevel& level = plan.levels[LastLevel(term, levelOf)];
        (term.tables.size() == 1 ? level.ownTerms : level.joinTerms).push_back(term);
    }
    return plan;
}

}   // namespace vela
