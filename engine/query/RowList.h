#pragma once

#include <cstdint>
#include <numeric>
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
    // cost a branch, once the first row has gone, and that few rows of many take little memory.
    template <class Keeps>
    void Retain(const Keeps& keeps)
    {
        uint32_t next = 0;   // to be asked about
        while (next < mCount && keeps(At(next)))
            next++;
        if (next == mCount)
            return;
        mCount = mIsRange ? RetainOfRange(next, keeps) : RetainOfRows(next, keeps);
        mRows.resize(mCount);
        mIsRange = false;
    }

private:
    // Both are given how many rows at the start are known to stay, and return how many stay of all, first in mRows.
    template <class Keeps>
    uint32_t RetainOfRows(uint32_t kept, const Keeps& keeps)
    {
        for (uint32_t i = kept; i < mCount; i++) {
            const uint32_t row = mRows[i];
            mRows[kept] = row;
            kept += keeps(row) ? 1 : 0;
        }
        return kept;
    }
    template <class Keeps>
    uint32_t RetainOfRange(uint32_t kept, const Keeps& keeps)
    {
        constexpr uint32_t kBatch = 4096;   // rows between two looks at the list's room
        mRows.resize(kept);
        std::iota(mRows.begin(), mRows.end(), mFirst);
        for (uint32_t i = kept; i < mCount;) {
            const uint32_t end = mCount - i > kBatch ? i + kBatch : mCount;
            mRows.resize(kept + (end - i));
            for (; i < end; i++) {
                mRows[kept] = mFirst + i;
                kept += keeps(mFirst + i) ? 1 : 0;
            }
        }
        return kept;
    }

    LargeVector<uint32_t> mRows;
    uint32_t mFirst = 0;   // of a range
    uint32_t mCount = 0;
    bool mIsRange = true;
};

}   // namespace vela
