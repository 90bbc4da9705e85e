#pragma once

#include <cstdint>
#include <utility>

#include "runtime/LargeMemory.h"

namespace vela {

// RowList is a list of rows, by row id or row number, in table order. All rows of a table by number
// are a count alone.
class RowList {
public:
    RowList() = default;
    explicit RowList(LargeVector<uint32_t> rows)
        : mRows(std::move(rows)), mCount(static_cast<uint32_t>(mRows.size())), mIsRange(false)
    {}
    // The numbers 0 to count - 1.
    [[nodiscard]] static RowList Range(uint32_t count)
    {
        RowList list;
        list.mCount = count;
        return list;
    }

    [[nodiscard]] uint32_t Count() const { return mCount; }
    [[nodiscard]] uint32_t At(uint32_t index) const { return mIsRange ? index : mRows[index]; }

    // Keeps the rows for which keeps(row) is true. Written so that an unpredictable answer does not
    // cost a branch.
    template <class Keeps>
    void Retain(const Keeps& keeps)
    {
        if (mIsRange)
            mRows.resize(mCount);
        uint32_t kept = 0;
        for (uint32_t i = 0; i < mCount; i++) {
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
    uint32_t mCount = 0;
    bool mIsRange = true;
};

}   // namespace vela
