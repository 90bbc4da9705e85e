#pragma once

#include <vector>

#include "engine/query/QueryPlan.h"
#include "engine/query/RowList.h"
#include "engine/query/VelaExpr.h"

namespace vela {

// RecSetEnumerator gives the combinations of rows of a query's tables that its WHERE lets through,
// one after another, in the order of the described enumeration. Nothing is read before the first
// Next, and no table before a row of it is needed.
//
// The rows of a record set are named as Context says: by row number where a table is read through
// its columns, else by row id. Borrows tables and WHERE; the tables must not change while it lives.
class RecSetEnumerator {
public:
    // where may be null.
    RecSetEnumerator(VelaDatabase* database, const SimpleVector<VelaTable*>& tables,
                     const VelaExpr* where);
    RecSetEnumerator(const RecSetEnumerator&) = delete;
    RecSetEnumerator& operator=(const RecSetEnumerator&) = delete;

    // Goes to the next record set. False: there is no more. A query without tables has one, without
    // rows.
    [[nodiscard]] bool Next();
    // For evaluating expressions on the current record set. Without one, all its rows are unbound.
    [[nodiscard]] const VelaEvalContext& Context() const { return mContext; }
    // The rows of the current record set, one per table; where they lie doesn't change.
    [[nodiscard]] const std::vector<uint32_t>& Rows() const { return mRows; }
    // The row id that a row of a table has.
    [[nodiscard]] uint32_t RowIDOf(size_t table, uint32_t row) const
    {
        return mColumns[table] ? mColumns[table]->RowIDs()[row] : row;
    }
    // How many combinations, complete or not, were looked at so far.
    [[nodiscard]] uint64_t Considered() const { return mConsidered; }

private:
    // Where a level's loop stands.
    struct Loop {
        RowList rows;   // that the level's own terms let through
        bool isLoaded = false;
        uint32_t position = 0;   // of the next row, counted in the level's direction
    };

    [[nodiscard]] bool Start();
    void Open(size_t level);
    [[nodiscard]] bool Advance(size_t level);
    [[nodiscard]] RowList LoadRows(const QueryLevel& level);
    [[nodiscard]] RowList AllRows(size_t table);
    [[nodiscard]] bool AllKeep(const std::vector<QueryTerm>& terms) const;

    const SimpleVector<VelaTable*>& mTables;
    QueryPlan mPlan;
    SimpleVector<TableColumns*> mColumns;
    std::vector<uint32_t> mRows;
    VelaRecSet mRecSet;
    VelaEvalContext mContext;
    std::vector<Loop> mLoops;   // one per level
    uint64_t mConsidered = 0;
    bool mStarted = false;
};

}   // namespace vela
