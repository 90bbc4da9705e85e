#include "engine/query/RecSetEnumerator.h"

#include "engine/query/ExprShape.h"

namespace vela {

namespace {

void StartTrace(const QueryPlan& plan, QueryTrace* trace)
{
    *trace = QueryTrace();
    for (const QueryTerm& term : plan.constantTerms)
        trace->constantTerms.push_back(term.expr);
    for (const QueryLevel& level : plan.levels) {
        trace->levels.emplace_back();
        trace->levels.back().table = level.table;
        trace->levels.back().reversed = level.reversed;
    }
}

}   // namespace

RecSetEnumerator::RecSetEnumerator(VelaDatabase* database, const SimpleVector<VelaTable*>& tables,
                                   const VelaExpr* where, std::vector<const VelaExpr*> outputs,
                                   QueryTrace* trace)
    : mPlan(MakeQueryPlan(where, tables.size())), mState{tables,       std::move(outputs), {}, {},
                                                         VelaRecSet(), VelaEvalContext(),  0}
{
    mState.columns.resize(tables.size());
    mState.rows.assign(tables.size(), kInvalidRowID);
    mState.recSet = VelaRecSet(mState.rows.data());
    mState.context.recSet = &mState.recSet;
    mState.context.tables = &tables;
    mState.context.database = database;
    mState.context.columns = &mState.columns;
    if (trace)
        StartTrace(mPlan, trace);
    mLoops.reserve(mPlan.levels.size());
    for (size_t i = 0; i < mPlan.levels.size(); i++)
        mLoops.emplace_back(&mPlan.levels[i], &mState, trace ? &trace->levels[i] : nullptr);
}

// The loops are nested without recursion: a FROM may list any number of tables. level counts those
// that are open.
bool RecSetEnumerator::Next()
{
    size_t level = mLoops.size();
    if (!mStarted) {
        if (!Start())
            return false;
        if (mLoops.empty())
            return true;
        Open(0);
        level = 1;
    }
    while (level > 0) {
        if (!mLoops[level - 1].Next()) {
            level--;
            continue;
        }
        if (level == mLoops.size())
            return true;
        Open(level++);
    }
    return false;
}

uint64_t RecSetEnumerator::CountRest()
{
    uint64_t count = 0;
    while (Next())
        count += mLoops.empty() ? 1 : 1 + mLoops.back().SkipRest();
    return count;
}

void RecSetEnumerator::CollectRest(RecSetList* list)
{
    while (Next()) {
        list->Add(mState.rows.data());
        if (!mLoops.empty())
            mLoops.back().CollectRest(list);
    }
}

// Whether there can be any record set at all.
bool RecSetEnumerator::Start()
{
    mStarted = true;
    mState.considered++;
    return mState.AllKeep(mPlan.constantTerms);
}

void RecSetEnumerator::Open(size_t level)
{
    constexpr uint64_t kMany = UINT32_MAX;
    uint64_t outerCount = 1;
    for (size_t outer = 0; outer < level && outerCount < kMany; outer++)
        outerCount *= mLoops[outer].Count();
    mLoops[level].Open(outerCount);
}

}   // namespace vela
