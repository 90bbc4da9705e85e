#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "engine/query/HashChains.h"
#include "runtime/LargeMemory.h"

namespace vela {

// IntegerChains finds, among entries numbered from 0 whose keys are Integers, those of a certain key; exactly those.
//
// Keys of a range that is not much wider than they, or the searches for them, are many are found by number, 4 bytes for each
// number of the range; others by a hash, 16 to 32 bytes for each entry. 4 bytes an entry beside that.
class IntegerChains {
public:
    static constexpr uint32_t kNone = HashChains::kNone;

    // keys[i] is the key of entry i. ascending: the order in which the entries of one key come. searches: about how many
    // there will be. Once only.
    void Build(const LargeVector<int32_t>& keys, bool ascending, size_t searches);

    // Calls use(first), where first(key) gives the first entry of a key, kNone for none.
    template <class Use>
    void WithFirst(const Use& use) const
    {
        // Copies, so that what use writes elsewhere doesn't have them read anew for each key.
        const uint32_t* const heads = mHeads.data();
        const uint32_t smallest = static_cast<uint32_t>(mSmallest);
        const uint32_t range = mRange;
        if (mSlots.empty())
            use([heads, smallest, range](int32_t key) {
                return heads[std::min(static_cast<uint32_t>(key) - smallest, range)];
            });
        else
            use([this](int32_t key) { return mSlots[SlotOf(key)].head; });
    }
    // The next entry of the same key; kNone after the last.
    [[nodiscard]] uint32_t Next(uint32_t entry) const { return mNext[entry]; }

private:
    struct Slot {
        int32_t key;
        uint32_t head;
    };

    [[nodiscard]] uint32_t NumberOf(int32_t key) const
    {
        return static_cast<uint32_t>(key) - static_cast<uint32_t>(mSmallest);
    }
    // Where the key is, or would be.
    [[nodiscard]] size_t SlotOf(int32_t key) const
    {
        size_t slot = static_cast<size_t>(MixBits(static_cast<uint32_t>(key))) & mMask;
        while (mSlots[slot].head != kNone && mSlots[slot].key != key)
            slot = (slot + 1) & mMask;
        return slot;
    }
    void MakeHeads(const LargeVector<int32_t>& keys, size_t searches);
    void Link(uint32_t entry, int32_t key);

    LargeVector<uint32_t>
        mHeads;   // by number, with one that stays kNone for keys beyond the range
    int32_t mSmallest = 0;
    uint32_t mRange = 0;
    LargeVector<Slot> mSlots;   // at most half of them used; empty where keys are found by number
    size_t mMask = 0;
    LargeVector<uint32_t> mNext;
};

}   // namespace vela
