#include "engine/query/RecSetList.h"

namespace vela {

void RecSetList::Rearrange(const LargeVector<uint32_t>& newPositions)
{
    LargeVector<uint32_t> rows(mRows.size());
    for (size_t i = 0; i < mCount; i++) {
        for (size_t table = 0; table < mTableCount; table++)
            rows[newPositions[i] * mTableCount + table] = mRows[i * mTableCount + table];
    }
    mRows.swap(rows);
}

void RecSetList::Arrange(const std::vector<uint32_t>& order)
{
    LargeVector<uint32_t> rows(mRows.size());
    uint32_t* place = rows.data();
    for (const uint32_t from : order) {
        for (size_t table = 0; table < mTableCount; table++)
            *place++ = mRows[from * mTableCount + table];
    }
    mRows.swap(rows);
}

}   // namespace vela
