#include "engine/query/IntegerChains.h"

namespace vela {

namespace {

// A table of this many numbers is always worth making, and one of so many for each entry beside one for each search.
constexpr uint64_t kSmallRange = 1024;
constexpr uint64_t kRangePerEntry = 8;

}   // namespace

void IntegerChains::Build(const LargeVector<int32_t>& keys, bool ascending, size_t searches)
{
    MakeHeads(keys, searches);
    const auto count = static_cast<uint32_t>(keys.size());
    mNext.resize(count);
    // What is linked last comes first.
    for (uint32_t i = 0; i < count; i++) {
        const uint32_t entry = ascending ? count - 1 - i : i;
        Link(entry, keys[entry]);
    }
}

void IntegerChains::MakeHeads(const LargeVector<int32_t>& keys, size_t searches)
{
    const auto [smallest, largest] = std::minmax_element(keys.begin(), keys.end());
    const uint64_t range =
        keys.empty() ? 0 : static_cast<uint64_t>(int64_t{*largest} - *smallest) + 1;
    if (range <= kSmallRange + keys.size() * kRangePerEntry + searches && range < UINT32_MAX) {
        mSmallest = keys.empty() ? 0 : *smallest;
        mRange = static_cast<uint32_t>(range);
        mHeads.assign(mRange + size_t{1}, kNone);
        return;
    }
    size_t slots = kSmallRange;
    while (slots < keys.size() * 2)
        slots *= 2;
    mSlots.assign(slots, {0, kNone});
    mMask = slots - 1;
}

void IntegerChains::Link(uint32_t entry, int32_t key)
{
    uint32_t* head = nullptr;
    if (mSlots.empty()) {
        head = &mHeads[NumberOf(key)];
    } else {
        Slot& slot = mSlots[SlotOf(key)];
        slot.key = key;
        head = &slot.head;
    }
    mNext[entry] = *head;
    *head = entry;
}

}   // namespace vela
