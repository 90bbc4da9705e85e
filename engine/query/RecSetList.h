#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

#include "engine/query/VelaRecSet.h"
#include "runtime/LargeMemory.h"

namespace vela {

// RecSetList owns record sets side by side in one array: 4 bytes for each table of each.
class RecSetList {
public:
    explicit RecSetList(size_t tableCount) : mTableCount(tableCount) {}

    // rows: one per table.
    void Add(const uint32_t* rows)
    {
        mRows.insert(mRows.end(), rows, rows + mTableCount);
        mCount++;
    }
    // Adds the same rows count times, but for those of one table: there, the i-th one has rowOf(i).
    template <class RowOf>
    void AddRange(const uint32_t* rows, size_t table, uint32_t count, const RowOf& rowOf)
    {
        const size_t start = mRows.size();
        mRows.resize(start + size_t{count} * mTableCount);
        uint32_t* place = mRows.data() + start;
        for (uint32_t i = 0; i < count; i++, place += mTableCount) {
            if (mTableCount > 1)
                std::copy(rows, rows + mTableCount, place);
            place[table] = rowOf(i);
        }
        mCount += count;
    }
    // Adds count record sets of at least one table; where the rows of the first one are to be put, and those of the others
    // behind. Good until the list grows.
    [[nodiscard]] uint32_t* Extend(size_t count)
    {
        if (count > SIZE_MAX / 2 / mTableCount - mRows.size() / mTableCount)
            throw std::bad_alloc();
        mRows.resize(mRows.size() + count * mTableCount);
        mCount += count;
        return mRows.data() + (mCount - count) * mTableCount;
    }
    // Makes room for count record sets in all.
    void Reserve(size_t count) { mRows.reserve(count * mTableCount); }
    // Leaves the first count ones.
    void Shorten(size_t count)
    {
        mRows.resize(count * mTableCount);
        mCount = count;
    }
    // Keeps the record sets for which keeps(recSet) is true.
    template <class Keeps>
    void Retain(const Keeps& keeps)
    {
        size_t kept = 0;
        for (size_t i = 0; i < mCount; i++) {
            const uint32_t* rows = mRows.data() + i * mTableCount;
            if (keeps(VelaRecSet(rows)))
                std::copy(rows, rows + mTableCount, mRows.data() + kept++ * mTableCount);
        }
        Shorten(kept);
    }
    [[nodiscard]] size_t Count() const { return mCount; }
    [[nodiscard]] size_t TableCount() const { return mTableCount; }
    [[nodiscard]] VelaRecSet At(size_t index) const
    {
        return VelaRecSet(mRows.data() + index * mTableCount);
    }
    // The record sets from start to end - 1, in place.
    [[nodiscard]] VelaRecSetGroup Group(size_t start, size_t end) const
    {
        return {mRows.data() + start * mTableCount, end - start, mTableCount};
    }
    // Moves record set i to newPositions[i], for all i; the new positions are those from 0 to
    // Count() - 1.
    void Rearrange(const LargeVector<uint32_t>& newPositions);
    // Moves record set order[i] to position i, for all i; the order has each position once.
    void Arrange(const std::vector<uint32_t>& order);

private:
    LargeVector<uint32_t> mRows;
    size_t mTableCount;
    size_t mCount = 0;   // not told by mRows when there are no tables
};

}   // namespace vela
