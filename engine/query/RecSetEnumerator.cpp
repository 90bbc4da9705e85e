#include "engine/query/RecSetEnumerator.h"

#include "engine/storage/TableColumns.h"

namespace vela {

RecSetEnumerator::RecSetEnumerator(VelaDatabase* database, const SimpleVector<VelaTable*>& tables,
                                   const VelaExpr* where)
    : mTables(tables),
      mPlan(MakeQueryPlan(where, tables.size())),
      mRows(tables.size(), kInvalidRowID),
      mRecSet(mRows.data()),
      mLoops(tables.size())
{
    mColumns.resize(tables.size());
    mContext.recSet = &mRecSet;
    mContext.tables = &mTables;
    mContext.database = database;
    mContext.columns = &mColumns;
}

bool RecSetEnumerator::Next()
{
    const size_t levelCount = mLoops.size();
    size_t level = levelCount;
    if (!mStarted) {
        if (!Start())
            return false;
        if (levelCount == 0)
            return true;
        Open(0);
        level = 1;
    }
    while (level > 0) {
        if (!Advance(level - 1)) {
            level--;
            continue;
        }
        if (level == levelCount)
            return true;
        Open(level++);
    }
    return false;
}

// Whether there can be any record set at all.
bool RecSetEnumerator::Start()
{
    mStarted = true;
    mConsidered++;
    return AllKeep(mPlan.constantTerms);
}

void RecSetEnumerator::Open(size_t level)
{
    Loop& loop = mLoops[level];
    if (!loop.isLoaded) {
        loop.rows = LoadRows(mPlan.levels[level]);
        loop.isLoaded = true;
    }
    loop.position = 0;
}

// Binds the level's next row that its join terms let through. False: there is none, and the level
// is unbound again.
bool RecSetEnumerator::Advance(size_t level)
{
    const QueryLevel& plan = mPlan.levels[level];
    Loop& loop = mLoops[level];
    while (loop.position < loop.rows.Count()) {
        const uint32_t index =
            plan.reversed ? loop.rows.Count() - 1 - loop.position : loop.position;
        loop.position++;
        mConsidered++;
        mRows[plan.table] = loop.rows.At(index);
        if (AllKeep(plan.joinTerms))
            return true;
    }
    mRows[plan.table] = kInvalidRowID;
    return false;
}

RowList RecSetEnumerator::LoadRows(const QueryLevel& level)
{
    RowList all = AllRows(level.table);
    if (level.ownTerms.empty())
        return all;
    std::vector<uint32_t> kept;
    mConsidered += all.Count();
    for (uint32_t i = 0; i < all.Count(); i++) {
        mRows[level.table] = all.At(i);
        if (AllKeep(level.ownTerms))
            kept.push_back(all.At(i));
    }
    return RowList(std::move(kept));
}

RowList RecSetEnumerator::AllRows(size_t table)
{
    mColumns[table] = mTables[table]->Columns();
    if (mColumns[table])
        return RowList::Range(mColumns[table]->RowCount());
    SimpleVector<uint32_t> rowIDs;
    mTables[table]->GetRowIDs(&rowIDs);
    return RowList(std::vector<uint32_t>(rowIDs.begin(), rowIDs.end()));
}

bool RecSetEnumerator::AllKeep(const std::vector<QueryTerm>& terms) const
{
    for (const QueryTerm& term : terms) {
        if (!term.Keeps(mContext))
            return false;
    }
    return true;
}

}   // namespace vela
