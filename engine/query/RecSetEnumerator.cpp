#include "engine/query/RecSetEnumerator.h"

#include <algorithm>

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

bool RecSetEnumerator::Next()
{
    if (mStarted)
        return Advance(mLoops.size());
    if (!Start())
        return false;
    if (mLoops.empty())
        return true;
    Open(0);
    return Advance(1);
}

// The loops are nested without recursion: a FROM may list any number of tables. level counts those
// that are open.
bool RecSetEnumerator::Advance(size_t level)
{
    while (level > mBaseLevel) {
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
    if (mStarted || mLoops.size() < 2) {
        while (Next())
            count += mLoops.empty() ? 1 : 1 + mLoops.back().SkipRest();
        return count;
    }
    ForEachOf(ExtendLevels(false), [&] { count += 1 + mLoops.back().SkipRest(); });
    return count;
}

void RecSetEnumerator::CollectRest(RecSetList* list)
{
    const auto add = [&] {
        list->Add(mState.rows.data());
        if (!mLoops.empty())
            mLoops.back().CollectRest(list);
    };
    if (mStarted || mLoops.empty()) {
        while (Next())
            add();
        return;
    }
    RecSetList started = ExtendLevels(true);
    if (mBaseLevel == mLoops.size() && list->Count() == 0)
        *list = std::move(started);
    else
        ForEachOf(started, add);
}

// The record sets of the first levels, as many levels as can be gone through one by one: mBaseLevel. listsAll: complete
// ones will be listed anyway, however many they are.
RecSetList RecSetEnumerator::ExtendLevels(bool listsAll)
{
    RecSetList list(mState.rows.size());
    if (!Start())
        return list;
    list.Add(mState.rows.data());
    while (mBaseLevel < mLoops.size() && list.Count() > 0) {
        RecSetList longer(mState.rows.size());
        Bind(list.At(0).Rows());
        const bool isLast = listsAll && mBaseLevel + 1 == mLoops.size();
        const bool isExtended = mLoops[mBaseLevel].Extend(list, isLast, &longer);
        std::fill(mState.rows.begin(), mState.rows.end(), kInvalidRowID);
        if (!isExtended)
            break;
        list = std::move(longer);
        mBaseLevel++;
    }
    mBaseCount = list.Count();
    return list;
}

void RecSetEnumerator::Bind(const uint32_t* rows)
{
    std::copy(rows, rows + mState.rows.size(), mState.rows.begin());
}

// Calls use() for every record set that the ones started with come to on the levels that are left.
template <class Use>
void RecSetEnumerator::ForEachOf(const RecSetList& started, const Use& use)
{
    for (size_t i = 0; i < started.Count(); i++) {
        Bind(started.At(i).Rows());
        if (mBaseLevel == mLoops.size()) {
            use();
            continue;
        }
        Open(mBaseLevel);
        for (bool more = Advance(mBaseLevel + 1); more; more = Advance(mLoops.size()))
            use();
    }
    std::fill(mState.rows.begin(), mState.rows.end(), kInvalidRowID);
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
    uint64_t outerCount = mBaseCount;
    for (size_t outer = mBaseLevel; outer < level && outerCount < kMany; outer++)
        outerCount *= mLoops[outer].Count();
    mLoops[level].Open(outerCount);
}

}   // namespace vela
