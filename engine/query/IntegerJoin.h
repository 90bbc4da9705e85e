#pragma once

#include "engine/query/IntegerChains.h"
#include "engine/query/RecSetList.h"
#include "engine/query/RowList.h"
#include "engine/storage/TableColumns.h"

namespace vela {

// IntegerJoin ties a whole list of record sets to rows of one more table by equality of two Integers. The table of keys is
// made of the side that has fewer, and the other side is gone through once.
class IntegerJoin {
public:
    // keys[i] belongs to record set i of outer, column to the rows of that table by number; it has Integers without nulls.
    // reversed: each record set's rows come from the last to the first. Borrows all.
    IntegerJoin(const RecSetList& outer, const LargeVector<int32_t>& keys, size_t table,
                const ColumnData& column, const RowList& rows, bool reversed)
        : mOuter(outer),
          mKeys(keys),
          mTable(table),
          mColumn(column),
          mRows(rows),
          mReversed(reversed)
    {}

    // Appends the record sets that this gives, those of the first one of outer first. False: there would be more than
    // limit; the result is as it was.
    [[nodiscard]] bool Append(size_t limit, RecSetList* result) const;

private:
    // A record set of outer, and a row for it.
    struct Match {
        uint32_t outer;
        uint32_t row;
    };

    [[nodiscard]] bool AppendByRows(size_t limit, RecSetList* result) const;
    [[nodiscard]] bool AppendByKeys(size_t limit, RecSetList* result) const;
    [[nodiscard]] bool FindMatches(size_t limit, LargeVector<Match>* matches) const;
    template <class First>
    [[nodiscard]] size_t FindCandidates(const First& first, uint32_t begin, uint32_t end,
                                        Match* found) const;
    void Place(uint32_t outer, uint32_t row, uint32_t* place) const;
    // The i-th row in the direction of the join.
    [[nodiscard]] uint32_t RowAt(uint32_t i) const
    {
        return mRows.At(mReversed ? mRows.Count() - 1 - i : i);
    }

    const RecSetList& mOuter;
    const LargeVector<int32_t>& mKeys;
    size_t mTable;
    const ColumnData& mColumn;
    const RowList& mRows;
    bool mReversed;
};

}   // namespace vela
