#pragma once

#include <cstdint>
#include <utility>

#include "runtime/LargeMemory.h"

namespace vela {

// RowList is a list of rows, by row id or row number, in table order. All rows of a table by number
// are a count alone, and so is a single row with its number.
class RowList {
public:
    RowList() = default;
    explicit RowList(LargeVector<uint32_t> rows)
        : mRows(std::move(rows)), mCount(static_cast<uint32_t>(mRows.size())), mIsRange(false)
    {}
    // The numbers from first to first + count - 1.
    [[nodiscard]] static RowList Range(uint32_t count, uint32_t first = 0)
    {
        RowList list;
        list.mCount = count;
        list.mFirst = first;
        return list;
    }

    [[nodiscard]] uint32_t Count() const { return mCount; }
    [[nodiscard]] uint32_t At(uint32_t index) const
    {
        return mIsRange ? mFirst + index : mRows[index];
    }

    // Keeps the rows for which keeps(row) is true. Written so that an unpredictable answer does not
    // cost a branch, once the first row has gone.
    template <class Keeps>
    void Retain(const Keeps& keeps)
    {
        uint32_t next = 0;   // to be asked about
        while (next < mCount && keeps(At(next)))
            next++;
        if (next == mCount)
            return;
        if (mIsRange)
            mRows.resize(mCount);
        for (uint32_t i = 0; mIsRange && i < next; i++)
            mRows[i] = mFirst + i;
        uint32_t kept = next;
        for (uint32_t i = next + 1; i < mCount; i++) {
            const uint32_t row = At(i);
            mRows[kept] = row;
            kept += keeps(row) ? 1 : 0;
        }
        mRows.resize(kept);
        mCount = kept;
        mIsRange = false;
    }

private:
    LargeVector<uint32_t> mRows;
    uint32_t mFirst = 0;   // of a range
    uint32_t mCount = 0;
    bool mIsRange = true;
};

}   // namespace vela
