#pragma once

#include <vector>

#include "engine/query/VelaRecSet.h"

namespace vela {

// RecSetList owns record sets side by side in one array: 4 bytes for each table of each.
class RecSetList {
public:
    explicit RecSetList(size_t tableCount) : mTableCount(tableCount) {}

    // Makes room for count more; worth asking for many.
    void Reserve(size_t count)
    {
        const size_t wanted = mRows.size() + count * mTableCount;
        if (wanted > 2 * mRows.capacity())
            mRows.reserve(wanted);
    }
    // rows: one per table.
    void Add(const uint32_t* rows)
    {
        mRows.insert(mRows.end(), rows, rows + mTableCount);
        mCount++;
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
    void Rearrange(const std::vector<uint32_t>& newPositions);

private:
    std::vector<uint32_t> mRows;
    size_t mTableCount;
    size_t mCount = 0;   // not told by mRows when there are no tables
};

}   // namespace vela
