#pragma once

#include <bit>
#include <cstdint>

#include "engine/storage/RowMap.h"

namespace vela {

// RowSet is a set of row ids, which mostly lie close together: sixty-four neighbours share a word of bits. An Insert that runs
// out of memory has changed nothing; nothing else takes memory.
class RowSet {
public:
    // False when it is there already.
    bool Insert(uint32_t rowID)
    {
        uint64_t* word = mWords.FindNode(rowID >> kWordBits);
        if (word == nullptr)
            mWords.Append(rowID >> kWordBits, BitOf(rowID));
        else if ((*word & BitOf(rowID)) != 0)
            return false;
        else
            *word |= BitOf(rowID);
        mCount++;
        return true;
    }
    // The row id must be there.
    void Remove(uint32_t rowID)
    {
        *mWords.FindNode(rowID >> kWordBits) &= ~BitOf(rowID);
        mCount--;
    }
    void Clear()
    {
        mWords.RemoveAll();
        mCount = 0;
    }
    [[nodiscard]] bool Contains(uint32_t rowID) const
    {
        return mCount > 0 && (mWords.GetItem(rowID >> kWordBits) & BitOf(rowID)) != 0;
    }
    [[nodiscard]] size_t Count() const { return mCount; }
    // Calls take(rowID) for each, neighbours in ascending order, until it returns false; says whether it never did.
    template <class Take>
    bool ForEach(const Take& take)
    {
        for (size_t i = 0; i < mWords.Count(); i++) {
            const uint32_t first = mWords.GetRowIDByIndex(i) << kWordBits;
            for (uint64_t word = mWords.GetItemByIndex(i); word != 0; word &= word - 1)
                if (!take(first + static_cast<uint32_t>(std::countr_zero(word))))
                    return false;
        }
        return true;
    }

private:
    static constexpr uint32_t kWordBits = 6;

    [[nodiscard]] static uint64_t BitOf(uint32_t rowID)
    {
        return uint64_t{1} << (rowID & ((1u << kWordBits) - 1));
    }

    RowMap<uint64_t> mWords;   // by row id / 64; never listed twice, and never removed
    size_t mCount = 0;
};

}   // namespace vela
