#pragma once

#include <vector>

#include "engine/query/LevelLoop.h"
#include "engine/query/QueryPlan.h"
#include "engine/query/RecSetList.h"

namespace vela {

// RecSetEnumerator gives the combinations of rows of a query's tables that its WHERE lets through,
// one after another, in the order of the described enumeration (see QueryPlan.h). Nothing is read
// before the first Next, and no table before a row of it is needed.
//
// The rows of a record set are named as Context says: by row number where a table is read through
// its columns, else by row id. Borrows tables and WHERE; the tables must not change while it lives.
class RecSetEnumerator {
public:
    // where may be null. outputs: what will be evaluated on the record sets, so that its columns
    // can be loaded along with those of the WHERE. trace may be null; what is
    // done is taken down in it, for its life.
    RecSetEnumerator(VelaDatabase* database, const SimpleVector<VelaTable*>& tables,
                     const VelaExpr* where, std::vector<const VelaExpr*> outputs,
                     QueryTrace* trace = nullptr);
    RecSetEnumerator(const RecSetEnumerator&) = delete;
    RecSetEnumerator& operator=(const RecSetEnumerator&) = delete;

    // Goes to the next record set. False: there is no more. A query without tables has one, without
    // rows.
    [[nodiscard]] bool Next();
    // Goes through all record sets that are left; how many there were. Rows that no term ties to
    // rows of other tables are counted without being looked at one by one.
    [[nodiscard]] uint64_t CountRest();
    // Goes through all record sets that are left and appends them to the list; before the first Next level by level, as
    // far as LevelLoop::Extend serves.
    void CollectRest(RecSetList* list);
    // For evaluating expressions on the current record set. Without one, all its rows are unbound.
    [[nodiscard]] const VelaEvalContext& Context() const { return mState.context; }
    // The rows of the current record set, one per table; where they lie doesn't change.
    [[nodiscard]] const std::vector<uint32_t>& Rows() const { return mState.rows; }
    // How many combinations, complete or not, were looked at so far; where a table is filtered by
    // itself, each of its rows counts once.
    [[nodiscard]] uint64_t Considered() const { return mState.considered; }

private:
    [[nodiscard]] bool Start();
    [[nodiscard]] bool Advance(size_t level);
    void Open(size_t level);
    [[nodiscard]] RecSetList ExtendLevels(bool listsAll);
    void Bind(const uint32_t* rows);
    template <class Use>
    void ForEachOf(const RecSetList& started, const Use& use);

    QueryPlan mPlan;
    EnumerationState mState;
    std::vector<LevelLoop> mLoops;   // one per level
    bool mStarted = false;
    // The levels before this one are not walked: rows of theirs were bound, one combination of mBaseCount after another.
    size_t mBaseLevel = 0;
    uint64_t mBaseCount = 1;
};

}   // namespace vela
