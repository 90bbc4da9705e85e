#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace vela {

// RemovedRows takes the same rows out of several lists that have an element for each row.
class RemovedRows {
public:
    // rows are row numbers, in any order and perhaps repeated, one at least.
    explicit RemovedRows(const std::vector<uint32_t>& rows)
        : mFirst(*std::min_element(rows.begin(), rows.end())),
          mStays(*std::max_element(rows.begin(), rows.end()) - mFirst + size_t{1}, 1)
    {
        for (uint32_t row : rows)
            mStays[row - mFirst] = 0;
    }

    // Calls use(row) for each removed row, in ascending order.
    template <class Use>
    void ForEach(const Use& use) const
    {
        for (size_t i = 0; i < mStays.size(); i++)
            if (mStays[i] == 0)
                use(mFirst + i);
    }

    // Closes the gaps in a list, which is empty, or has all of the rows.
    template <class List>
    void RemoveFrom(List* list) const
    {
        using Item = typename List::value_type;
        if (list->empty())
            return;
        const auto items = list->begin();
        const uint8_t* stays = mStays.data();
        size_t kept = mFirst;
        for (size_t i = 0, count = mStays.size(); i < count; i++) {
            // Without asking, where that does no harm: whether a row stays can't be foreseen.
            if (std::is_trivially_copyable_v<Item> || (stays[i] != 0 && kept < mFirst + i))
                items[static_cast<std::ptrdiff_t>(kept)] =
                    std::move(items[static_cast<std::ptrdiff_t>(mFirst + i)]);
            kept += stays[i];
        }
        const auto end = std::move(items + static_cast<std::ptrdiff_t>(mFirst + mStays.size()),
                                   list->end(), items + static_cast<std::ptrdiff_t>(kept));
        list->resize(static_cast<size_t>(end - items));
    }

private:
    size_t mFirst;
    std::vector<uint8_t> mStays;   // 1 or 0 for each row from mFirst to the last removed one
};

}   // namespace vela
