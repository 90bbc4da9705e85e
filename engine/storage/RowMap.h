#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "engine/storage/VelaTable.h"
#include "runtime/ChunkedList.h"
#include "runtime/LargeMemory.h"

namespace vela {

// RowMap is a map keyed by row id that also keeps its keys in the order in which they were appended, so that a table can be
// walked in insertion order and addressed by position.
//
// The list is not deduplicated: a key that is set twice with Append is listed twice, and both places give its newest
// value. Look-up, Append and (while no key was listed twice) RemoveItem take constant time; positions are counted over the
// keys that are left.
//
// Row ids mostly run on without gaps. While each key is the one before it plus 1, and none has been removed but the last, only the
// values are kept: the place of a key in the list follows from the first key. After that, the slots of an open-addressing table
// hold places in the list; removed places stay in the list, marked, until they are half of it.
//
// An Append or Set that runs out of memory has changed nothing. RemoveItem takes no memory after PrepareRemoval.
template <class T>
class RowMap {
public:
    explicit RowMap(uint32_t expectedCount = 1000) { Presize(expectedCount); }

    // Empties the map, for n keys to come.
    void Presize(uint32_t n)
    {
        RemoveAll();
        mExpected = n;
    }
    void RemoveAll()
    {
        mValues.clear();
        mKeys.clear();
        mMarks.clear();
        mSlots.clear();
        mRunsOn = true;
        mRemoved = 0;
        mUsedSlots = 0;
        mListedTwice = false;
    }

    // The value of a key, for reading or changing; null when absent. Good until the next change of the map.
    [[nodiscard]] T* FindNode(uint32_t rowID)
    {
        const size_t place = FindPlace(rowID);
        return place == kNowhere ? nullptr : &mValues[place];
    }
    [[nodiscard]] const T* FindNode(uint32_t rowID) const
    {
        return const_cast<RowMap*>(this)->FindNode(rowID);
    }
    [[nodiscard]] bool Contains(uint32_t rowID) const { return FindPlace(rowID) != kNowhere; }
    // The value, or T's zero when the key is absent.
    [[nodiscard]] T GetItem(uint32_t rowID) const
    {
        const T* value = FindNode(rowID);
        return value ? *value : T();
    }

    // Appends the key to the list, unconditionally, and sets its value.
    void Append(uint32_t rowID, T value)
    {
        if (mRunsOn && mValues.empty())
            mFirst = rowID;
        if (mRunsOn && rowID - mFirst == mValues.size())
            mValues.push_back(std::move(value));
        else
            AppendKey(rowID, std::move(value));
    }

    // Takes the Append of a key back that was not there before it, as the last thing that has happened to the map.
    void TakeBack(uint32_t rowID)
    {
        mValues.pop_back();
        if (mRunsOn)
            return;
        mSlots[FindSlot(rowID)] = kRemovedSlot;
        mKeys.pop_back();
        mMarks.pop_back();
    }

    // Replaces the value of a key, or appends the key when it is absent.
    void Set(uint32_t rowID, T value)
    {
        if (T* present = FindNode(rowID))
            *present = std::move(value);
        else
            Append(rowID, std::move(value));
    }

    // Takes the memory that removing the key will need.
    void PrepareRemoval(uint32_t rowID)
    {
        const size_t place = FindPlace(rowID);
        if (mRunsOn && place != kNowhere && place + 1 != mValues.size())
            StopRunningOn();
    }

    // Drops the key and its first place in the list; false when it is absent.
    bool RemoveItem(uint32_t rowID)
    {
        PrepareRemoval(rowID);
        if (mRunsOn) {
            if (!Contains(rowID))
                return false;
            mValues.pop_back();
            return true;
        }
        const size_t slot = FindSlot(rowID);
        if (slot == kNowhere)
            return false;
        size_t first = mSlots[slot] - 1;
        mValues[first] = T();
        mMarks[first] = kListed;
        mSlots[slot] = kRemovedSlot;
        if (mListedTwice)
            first = ForgetAllPlaces(rowID);
        mMarks[first] = 0;
        mRemoved++;
        if (mRemoved > 64 && mRemoved > mKeys.size() / 2)
            Compact();
        return true;
    }

    // Keys in the list, those listed twice counted twice.
    [[nodiscard]] size_t Count() const { return mValues.size() - mRemoved; }
    // The position of the key's first place in the list; -1 when it isn't listed. Linear.
    [[nodiscard]] long FindIndex(uint32_t rowID) const
    {
        long index = 0;
        for (size_t place = 0; place < mValues.size(); place++) {
            if (!IsListed(place))
                continue;
            if (KeyAt(place) == rowID)
                return index;
            index++;
        }
        return -1;
    }
    // A number that is larger for keys appended later; the key must be there.
    [[nodiscard]] size_t OrderOf(uint32_t rowID) const { return FindPlace(rowID); }
    // By position in the list; a position outside it gives kInvalidRowID, or T's zero.
    [[nodiscard]] uint32_t GetRowIDByIndex(size_t index)
    {
        if (index >= Count())
            return kInvalidRowID;
        if (mRemoved)
            Compact();
        return KeyAt(index);
    }
    [[nodiscard]] T GetItemByIndex(size_t index)
    {
        if (index >= Count())
            return T();
        const uint32_t rowID = GetRowIDByIndex(index);
        return mListedTwice ? GetItem(rowID) : mValues[index];
    }

private:
    static constexpr uint8_t kListed = 1;   // counts as a place of the list
    static constexpr uint8_t kMapped = 2;   // its key is in the map
    static constexpr uint32_t kRemovedSlot = 0xFFFFFFFF;
    static constexpr size_t kNowhere = SIZE_MAX;
    static constexpr uint32_t kEagerRoom = 1024;
    static constexpr uint32_t kLineBits = 4;

    [[nodiscard]] uint32_t KeyAt(size_t place) const
    {
        return mRunsOn ? mFirst + static_cast<uint32_t>(place) : mKeys[place];
    }
    [[nodiscard]] bool IsListed(size_t place) const { return mRunsOn || mMarks[place] & kListed; }
    // The newest place of a key; kNowhere when it is absent.
    [[nodiscard]] size_t FindPlace(uint32_t rowID) const
    {
        if (mRunsOn) {
            const uint32_t place = rowID - mFirst;
            return place < mValues.size() ? place : kNowhere;
        }
        const size_t slot = FindSlot(rowID);
        return slot == kNowhere ? kNowhere : mSlots[slot] - 1;
    }

    // Of a key that doesn't run on.
    void AppendKey(uint32_t rowID, T value)
    {
        if (mRunsOn)
            StopRunningOn();
        const size_t slot = FindSlot(rowID);
        mKeys.MakeRoomForOne();
        mMarks.MakeRoomForOne();
        mValues.MakeRoomForOne();
        if (slot == kNowhere)
            MakeRoomForSlot();
        mKeys.push_back(rowID);
        mMarks.push_back(kListed | kMapped);
        mValues.push_back(std::move(value));
        const uint32_t place = static_cast<uint32_t>(mKeys.size());
        if (slot == kNowhere) {
            InsertSlot(rowID, place);
            return;
        }
        mListedTwice = true;
        mSlots[slot] = place;
    }

    // From now on keys are kept. When memory runs out, nothing has changed.
    void StopRunningOn()
    {
        const size_t count = mValues.size();
        ChunkedList<uint32_t> keys;
        ChunkedList<uint8_t> marks;
        for (size_t place = 0; place < count; place++) {
            keys.push_back(KeyAt(place));
            marks.push_back(kListed | kMapped);
        }
        LargeVector<uint32_t> slots =
            SlotsFor(mExpected > kEagerRoom ? std::max<size_t>(mExpected, count + 1) : count + 1);
        mKeys = std::move(keys);
        mMarks = std::move(marks);
        mRunsOn = false;
        TakeSlots(&slots);
    }

    // Sixteen neighbours share a line of memory; the lines are spread by multiplication, which keeps runs of them, and ids at
    // regular distances, from meeting in a few places.
    [[nodiscard]] size_t Home(uint32_t rowID) const
    {
        const uint32_t line =
            ((rowID >> kLineBits) * 0x9E3779B1u) >> (32 - (mSlotBits - kLineBits));
        return static_cast<size_t>(line) << kLineBits | (rowID & ((1u << kLineBits) - 1));
    }

    [[nodiscard]] size_t FindSlot(uint32_t rowID) const
    {
        for (size_t slot = Home(rowID);; slot = (slot + 1) & (mSlots.size() - 1)) {
            const uint32_t place = mSlots[slot];
            if (place == 0)
                return kNowhere;
            if (place != kRemovedSlot && mKeys[place - 1] == rowID)
                return slot;
        }
    }

    void MakeRoomForSlot()
    {
        if ((mUsedSlots + 1) * 4 <= mSlots.size() * 3)
            return;
        LargeVector<uint32_t> slots = SlotsFor(Count() + 1);
        TakeSlots(&slots);
    }

    void InsertSlot(uint32_t rowID, uint32_t place)
    {
        size_t slot = Home(rowID);
        while (mSlots[slot] != 0)
            slot = (slot + 1) & (mSlots.size() - 1);
        mSlots[slot] = place;
        mUsedSlots++;
    }

    // Free ones, as many as count keys want.
    [[nodiscard]] static LargeVector<uint32_t> SlotsFor(size_t count)
    {
        return LargeVector<uint32_t>(std::bit_ceil(count * 2 < 32 ? size_t{32} : count * 2), 0u);
    }
    void TakeSlots(LargeVector<uint32_t>* slots)
    {
        mSlots.swap(*slots);
        mSlotBits = static_cast<uint32_t>(std::countr_zero(mSlots.size()));
        FillSlots();
    }

    // Enters every key that is in the map into the slots, which are free; of a key listed twice the last place wins.
    void FillSlots()
    {
        mUsedSlots = 0;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (mMarks[place] != (kListed | kMapped))
                continue;
            const size_t slot = mListedTwice ? FindSlot(mKeys[place]) : kNowhere;
            if (slot != kNowhere)
                mSlots[slot] = static_cast<uint32_t>(place + 1);
            else
                InsertSlot(mKeys[place], static_cast<uint32_t>(place + 1));
        }
    }

    // Takes every place of a key that is listed more than once out of the map; returns the first one.
    size_t ForgetAllPlaces(uint32_t rowID)
    {
        size_t first = kNowhere;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (mKeys[place] != rowID || !IsListed(place))
                continue;
            mMarks[place] = kListed;
            if (first == kNowhere)
                first = place;
        }
        return first;
    }

    // Closes the gaps that removed keys left in the list. The slots stay as many as they are.
    void Compact()
    {
        size_t kept = 0;
        for (size_t place = 0; place < mKeys.size(); place++) {
            if (!IsListed(place))
                continue;
            if (kept != place) {
                mKeys[kept] = mKeys[place];
                mMarks[kept] = mMarks[place];
                mValues[kept] = std::move(mValues[place]);
            }
            kept++;
        }
        mKeys.Shorten(kept);
        mMarks.Shorten(kept);
        mValues.Shorten(kept);
        mRemoved = 0;
        std::fill(mSlots.begin(), mSlots.end(), 0u);
        FillSlots();
    }

    ChunkedList<T> mValues;   // in the order of the list
    bool mRunsOn = true;      // the keys are mFirst and those that follow it
    uint32_t mFirst = 0;
    uint32_t mExpected = 0;   // as Presize was told
    // Only when they don't run on:
    ChunkedList<uint32_t> mKeys;    // beside mValues
    ChunkedList<uint8_t> mMarks;    // beside mValues
    LargeVector<uint32_t> mSlots;   // place in the list + 1; 0 is free
    uint32_t mSlotBits = 0;
    size_t mUsedSlots = 0;   // not free, removed ones included
    size_t mRemoved = 0;
    bool mListedTwice = false;
};

}   // namespace vela
