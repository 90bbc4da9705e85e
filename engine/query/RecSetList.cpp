#include "engine/query/RecSetList.h"

namespace vela {

void RecSetList::Rearrange(const std::vector<uint32_t>& newPositions)
{
    std::vector<uint32_t> rows(mRows.size());
    for (size_t i = 0; i < mCount; i++) {
        for (size_t table = 0; table < mTableCount; table++)
            rows[newPositions[i] * mTableCount + table] = mRows[i * mTableCount + table];
    }
    mRows.swap(rows);
}

}   // namespace vela
