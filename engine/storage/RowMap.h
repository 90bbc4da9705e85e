#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "engine/storage/GoodBinCount.h"
#include "engine/storage/VelaTable.h"
#include "runtime/SimpleVector.h"

namespace vela {

// RowMap is a map keyed by row id that also keeps its keys in the order in which they were appended, so that a table can be
// walked in insertion order and addressed by position.
//
// The list is not deduplicated: a key that is set twice with Append is listed twice, and both places give its newest
// value. Look-up, Append and (while no key was listed twice) RemoveItem take constant time; positions are counted over the
// keys that are left. Inside, the slots of an open-addressing table hold positions in the list; removed places stay in the
// list, marked, until they are half of it. An Append or Set that runs out of memory has changed nothing; nothing else but
// Presize takes memory.
template <class T>
class RowMap {
public:
    explicit RowMap(uint32_t expectedCount = 1000) { Presize(expectedCount); }

    // Empties the map and makes room for n keys.
    void Presize(uint32_t n)
    {
        RemoveAll();
        mSlots.clear();
        if (n > kEagerRoom)
            Rehash(n);
        mKeys.reserve(n > kEagerRoom ? n : 0);
    }
    void RemoveAll()
    {
        mKeys.clear();
        mValues.clear();
        mSlots.clear();
        mRemoved = 0;
        mUsedSlots = 0;
        mListedTwice = false;
    }

    // The value of a key, for reading or changing; null when absent. Good until the next change of the map.
    [[nodiscard]] T* FindNode(uint32_t rowID)
    {
        const size_t slot = FindSlot(rowID);
        return slot == kNoSlot ? nullptr : &mValues[mSlots[slot] - 1].value;
    }
    [[nodiscard]] const T* FindNode(uint32_t rowID) const
    {
        return const_cast<RowMap*>(this)->FindNode(rowID);
    }
    [[nodiscard]] bool Contains(uint32_t rowID) const { return FindSlot(rowID) != kNoSlot; }
    // The value, or T's zero when the key is absent.
    [[nodiscard]] T GetItem(uint32_t rowID) const
    {
        const T* value = FindNode(rowID);
        return value ? *value : T();
    }

    // Appends the key to the list, unconditionally, and sets its value.
    void Append(uint32_t rowID, T value)
    {
        const size_t slot = FindSlot(rowID);
        mKeys.MakeRoomForOne();
        mValues.MakeRoomForOne();
        if (slot == kNoSlot)
            MakeRoomForSlot();
        mKeys.push_back(rowID);
        mValues.push_back({std::move(value), true, true});
        const uint32_t place = static_cast<uint32_t>(mKeys.size());
        if (slot == kNoSlot) {
            InsertSlot(rowID, place);
            return;
        }
        mListedTwice = true;
        mSlots[slot] = place;
    }

    // Takes the Append of a key back that was not there before it, as the last thing that has happened to the map.
    void TakeBack(uint32_t rowID)
    {
        mSlots[FindSlot(rowID)] = kRemovedSlot;
        mKeys.pop_back();
        mValues.pop_back();
    }

    // Replaces the value of a key, or appends the key when it is absent.
    void Set(uint32_t rowID, T value)
    {
        if (T* present = FindNode(rowID))
            *present = std::move(value);
        else
            Append(rowID, std::move(value));
    }

    // Drops the key and its first place in the list; false when it is absent.
    bool RemoveItem(uint32_t rowID)
    {
        const size_t slot = FindSlot(rowID);
        if (slot == kNoSlot)
            return false;
        size_t first = mSlots[slot] - 1;
        mValues[first] = {T(), true, false};
        mSlots[slot] = kRemovedSlot;
        if (mListedTwice)
            first = ForgetAllPlaces(rowID);
        mValues[first].listed = false;
        mRemoved++;
        if (mRemoved > 64 && mRemoved > mKeys.size() / 2)
            Compact();
        return true;
    }

    // Keys in the list, those listed twice counted twice.
    [[nodiscard]] size_t Count() const { return mKeys.size() - mRemoved; }
    // The position of the key's first place in the list; -1 when it isn't listed. Linear.
    [[nodiscard]] long FindIndex(uint32_t rowID) const
    {
        long index = 0;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (!mValues[place].listed)
                continue;
            if (mKeys[place] == rowID)
                return index;
            index++;
        }
        return -1;
    }
    // A number that is larger for keys appended later; the key must be there.
    [[nodiscard]] size_t OrderOf(uint32_t rowID) const { return mSlots[FindSlot(rowID)]; }
    // By position in the list; a position outside it gives kInvalidRowID, or T's zero.
    [[nodiscard]] uint32_t GetRowIDByIndex(size_t index)
    {
        if (index >= Count())
            return kInvalidRowID;
        if (mRemoved)
            Compact();
        return mKeys[index];
    }
    [[nodiscard]] T GetItemByIndex(size_t index)
    {
        if (index >= Count())
            return T();
        const uint32_t rowID = GetRowIDByIndex(index);
        return mListedTwice ? GetItem(rowID) : mValues[index].value;
    }

private:
    struct Place {
        T value;
        bool listed;   // counts as a place of the list
        bool mapped;   // its key is in the map
    };

    static constexpr uint32_t kRemovedSlot = 0xFFFFFFFF;
    static constexpr size_t kNoSlot = SIZE_MAX;
    static constexpr uint32_t kEagerRoom = 1024;
    static constexpr uint32_t kLineBits = 4;

    // Row ids mostly run on without gaps. Sixteen neighbours share a line of memory; the lines are spread by
    // multiplication, which keeps runs of them, and ids at regular distances, from meeting in a few places.
    [[nodiscard]] size_t Home(uint32_t rowID) const
    {
        const uint32_t line =
            ((rowID >> kLineBits) * 0x9E3779B1u) >> (32 - (mSlotBits - kLineBits));
        return static_cast<size_t>(line) << kLineBits | (rowID & ((1u << kLineBits) - 1));
    }

    [[nodiscard]] size_t FindSlot(uint32_t rowID) const
    {
        if (mSlots.empty())
            return kNoSlot;
        for (size_t slot = Home(rowID);; slot = (slot + 1) & (mSlots.size() - 1)) {
            const uint32_t place = mSlots[slot];
            if (place == 0)
                return kNoSlot;
            if (place != kRemovedSlot && mKeys[place - 1] == rowID)
                return slot;
        }
    }

    void MakeRoomForSlot()
    {
        if ((mUsedSlots + 1) * 4 > mSlots.size() * 3)
            Rehash(Count() + 1);
    }

    void InsertSlot(uint32_t rowID, uint32_t place)
    {
        size_t slot = Home(rowID);
        while (mSlots[slot] != 0)
            slot = (slot + 1) & (mSlots.size() - 1);
        mSlots[slot] = place;
        mUsedSlots++;
    }

    // Fits the slots to count keys.
    void Rehash(size_t count)
    {
        const size_t size = std::bit_ceil(count * 2 < 32 ? size_t{32} : count * 2);
        if (size > mSlots.capacity())
            mSlots = SimpleVector<uint32_t>::OfSize(size);
        else
            std::fill(mSlots.begin(), mSlots.end(), 0u);
        mSlots.resize(size);
        mSlotBits = static_cast<uint32_t>(std::countr_zero(size));
        FillSlots();
    }

    // Enters every key that is in the map into the slots, which are free; of a key listed twice the last place wins.
    void FillSlots()
    {
        const size_t size = mSlots.size();
        mUsedSlots = 0;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (!mValues[place].listed || !mValues[place].mapped)
                continue;
            const size_t slot = FindSlot(mKeys[place]);
            if (slot != kNoSlot) {
                mSlots[slot] = static_cast<uint32_t>(place + 1);
                continue;
            }
            size_t free = Home(mKeys[place]);
            while (mSlots[free] != 0)
                free = (free + 1) & (size - 1);
            mSlots[free] = static_cast<uint32_t>(place + 1);
            mUsedSlots++;
        }
    }

    // Takes every place of a key that is listed more than once out of the map; returns the first one.
    size_t ForgetAllPlaces(uint32_t rowID)
    {
        size_t first = kNoSlot;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (mKeys[place] != rowID || !mValues[place].listed)
                continue;
            mValues[place].mapped = false;
            if (first == kNoSlot)
                first = place;
        }
        return first;
    }

    // Closes the gaps that removed keys left in the list. The slots stay as many as they are.
    void Compact()
    {
        size_t kept = 0;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (!mValues[place].listed)
                continue;
            if (kept != place) {
                mKeys[kept] = mKeys[place];
                mValues[kept] = std::move(mValues[place]);
            }
            kept++;
        }
        mKeys.resize(kept);
        mValues.resize(kept);
        mRemoved = 0;
        std::fill(mSlots.begin(), mSlots.end(), 0u);
        FillSlots();
    }

    SimpleVector<uint32_t> mKeys;
    SimpleVector<Place> mValues;     // beside mKeys
    SimpleVector<uint32_t> mSlots;   // position in the list + 1; 0 is free
    uint32_t mSlotBits = 0;
    size_t mUsedSlots = 0;   // not free, removed ones included
    size_t mRemoved = 0;
    bool mListedTwice = false;
};

}   // namespace vela
